#include "data/Archives.h"

#include "data/Generations.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/store/DatabaseReader.h"
#include "platform/store/FileState.h"
#include "platform/store/FileWork.h"
#include "platform/store/Seal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <tuple>

namespace data {
namespace {

QString PlainCopy(const QString& folder)
{
    return host::PathIn(folder, ArchiveFolder + "/" + DatabaseFile);
}

/// Keeps the copy that is about to be replaced under the name of its day, unless it is damaged, of today or later.
void KeepGeneration(const QString& present)
{
    const QFileInfo file(present);
    const QDate day = file.lastModified().date();
    if (day >= host::Today() || !FaultOf(present).isEmpty())
        return;
    const QString generation = file.absolutePath() + "/" + GenerationName(day);
    const QFileInfo before(generation);
    if (before.exists() && (store::IsSameFile(present, generation) || before.lastModified() > file.lastModified()))
        return;
    const QString part = generation + ".part";
    QFile::remove(part);
    store::LinkFile(present, part);
    store::Replace(part, generation);
}

void DeleteSurplusGenerations(const QString& copies)
{
    const QDir folder(copies);
    for (const QString& name : SurplusGenerations(folder.entryList(QDir::Files | QDir::Hidden), host::Today()))
        QFile::remove(folder.filePath(name));
}

} // namespace

QString ArchivedCopy::Name() const
{
    return QFileInfo(path).fileName();
}

QDate ArchivedCopy::Day() const
{
    return kind == Kind::Generation ? GenerationDay(Name()) : changed.date();
}

ArchivedCopy CopyAt(const QString& path)
{
    static const QRegularExpression replaced("^ZEP_ONE avant .*\\.MDB$", QRegularExpression::CaseInsensitiveOption);
    using Kind = ArchivedCopy::Kind;
    const QFileInfo file(path);
    const QString name = file.fileName();
    const Kind kind = GenerationDay(name).isValid()                          ? Kind::Generation
                      : replaced.match(name).hasMatch()                      ? Kind::Replaced
                      : name.compare(DatabaseFile, Qt::CaseInsensitive) == 0 ? Kind::Latest
                                                                             : Kind::Other;
    return {file.absoluteFilePath(), kind, file.lastModified()};
}

QString CopiesFolder(const QString& folder)
{
    return QFileInfo(store::BehindLinks(PlainCopy(folder))).absolutePath();
}

QList<ArchivedCopy> ArchivedCopies(const QString& folder)
{
    QList<ArchivedCopy> copies;
    for (const QFileInfo& file : QDir(CopiesFolder(folder)).entryInfoList(QDir::Files | QDir::Hidden)) {
        const ArchivedCopy copy = CopyAt(file.filePath());
        if (copy.kind != ArchivedCopy::Kind::Other)
            copies << copy;
    }
    std::ranges::sort(copies, [](const ArchivedCopy& left, const ArchivedCopy& right) {
        const auto rank = [](const ArchivedCopy& copy) {
            return std::tuple(copy.kind != ArchivedCopy::Kind::Replaced, copy.Day(),
                              copy.kind == ArchivedCopy::Kind::Latest, copy.changed);
        };
        return rank(left) > rank(right);
    });
    return copies;
}

void RequireWhole(const QString& copy)
{
    const QString name = QFileInfo(copy).fileName();
    const store::DatabaseReader reader(copy);
    if (const QStringList planted = reader.PlantedCode(); !planted.isEmpty())
        throw basic::RuntimeError::Described(
            basic::Error::UnrecognizedFormat,
            QString("« %1 » contient un déclencheur ou une vue que le programme n'a pas créés : %2.")
                .arg(name, planted.join(", ")));
    const store::SealState seal = store::HasLog(copy) ? store::SealState::None : store::StateOfSeal(copy);
    if (seal == store::SealState::Intact)
        return;
    const QStringList damage = seal == store::SealState::Broken
                                   ? QStringList("son contenu a changé depuis qu'il a été écrit et contrôlé.")
                                   : reader.Damage(1);
    if (!damage.isEmpty())
        throw basic::RuntimeError::Described(basic::Error::DamagedDatabase,
                                             QString("« %1 » est endommagé : %2").arg(name, damage.first()));
}

QString FaultOf(const QString& copy)
{
    try {
        RequireWhole(copy);
        return {};
    } catch (const basic::RuntimeError& error) {
        return error.Description();
    }
}

std::optional<ArchivedCopy> NewestWholeCopy(const QString& folder, const std::optional<QDate>& before)
{
    const QDate first = before.value_or(host::Today().addDays(1)); // excluded, like all later ones
    for (const ArchivedCopy& copy : ArchivedCopies(folder)) {
        const bool counts = copy.kind != ArchivedCopy::Kind::Replaced && copy.Day() < first;
        if (counts && FaultOf(copy.path).isEmpty())
            return copy;
    }
    return std::nullopt;
}

QString MomentOf(const ArchivedCopy& copy)
{
    return copy.changed.toString("dd/MM/yyyy 'à' HH:mm");
}

void CopyToArchives(const QString& folder, const store::CopyProgress& progress)
{
    constexpr int plain = 0;
    constexpr int archiveBit = 32;
    const QString target = PlainCopy(folder);
    if (host::FileExists(target, plain)) {
        const int attributes = host::FileAttributes(target);
        if (attributes != plain && attributes != archiveBit)
            host::SetFileAttributes(target, plain);
    }
    store::CopyDatabase(host::PathIn(folder, DatabaseFile), target,
                        {.progress = progress, .beforeReplacing = [&folder](const QString& present) {
                             RemoveUnfinishedRestoration(folder);
                             KeepGeneration(present);
                         }});
    DeleteSurplusGenerations(CopiesFolder(folder));
}

} // namespace data
