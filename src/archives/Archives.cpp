#include "archives/Archives.h"

#include "archives/Generations.h"
#include "archives/Seal.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/store/DatabaseReader.h"
#include "platform/store/FileState.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <tuple>

namespace archives {
namespace {

/// A time of 0 is one as well.
QDateTime TimeOf(const QFileInfo& file)
{
    const QDateTime changed = file.lastModified();
    return changed.isValid() || !file.exists() ? changed : QDateTime::fromSecsSinceEpoch(0);
}

/// The condition of a copy that can be used; raises why it can't.
CopyCondition Examine(const QString& copy)
{
    using Kind = CopyCondition::Kind;
    const QString name = QFileInfo(copy).fileName();
    const store::DatabaseReader reader(copy);
    if (const QStringList planted = reader.PlantedCode(); !planted.isEmpty())
        throw basic::RuntimeError::Described(
            basic::Error::UnrecognizedFormat,
            QString("« %1 » contient un déclencheur ou une vue que le programme n'a pas créés : %2.")
                .arg(name, planted.join(", ")));
    const SealCheck seal = CheckSeal(copy);
    const bool hasLog = store::HasLog(copy); // written since the copy was sealed
    if (seal.state == SealState::Intact && !hasLog)
        return {Kind::Whole, {}, seal.digest};
    if (const QStringList damage = reader.Damage(1); !damage.isEmpty())
        throw basic::RuntimeError::Described(basic::Error::DamagedDatabase,
                                             QString("« %1 » est endommagé : %2").arg(name, damage.first()));
    if (seal.state == SealState::None)
        return {Kind::Whole, {}, seal.digest};
    return {Kind::Changed, QString("« %1 » a été modifiée depuis sa clôture.").arg(name), seal.digest};
}

} // namespace

QString PlainCopyOf(const QString& folder)
{
    return host::PathIn(folder, data::ArchiveFolder + "/" + data::DatabaseFile);
}

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
    const Kind kind = GenerationDay(name).isValid()                                ? Kind::Generation
                      : replaced.match(name).hasMatch()                            ? Kind::Replaced
                      : name.compare(data::DatabaseFile, Qt::CaseInsensitive) == 0 ? Kind::Latest
                                                                                   : Kind::Other;
    return {file.absoluteFilePath(), kind, TimeOf(file)};
}

QString CopiesFolder(const QString& folder)
{
    return QFileInfo(host::BehindLinks(PlainCopyOf(folder))).absolutePath();
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

CopyCondition ConditionOf(const QString& copy)
{
    try {
        return Examine(copy);
    } catch (const basic::RuntimeError& error) {
        return {CopyCondition::Kind::Unusable, error.Description(), {}};
    }
}

CopyCondition RequireUsable(const QString& copy)
{
    return Examine(copy);
}

QString FaultOf(const QString& copy)
{
    return ConditionOf(copy).reason;
}

std::optional<ArchivedCopy> NewestWholeCopy(const QString& folder, const std::optional<QDate>& before,
                                            CopyCondition::Kind kind)
{
    const QDate first = before.value_or(host::Today().addDays(1)); // excluded, like all later ones
    for (const ArchivedCopy& copy : ArchivedCopies(folder)) {
        const bool counts = copy.kind != ArchivedCopy::Kind::Replaced && copy.Day() < first;
        if (counts && ConditionOf(copy.path).kind == kind)
            return copy;
    }
    return std::nullopt;
}

QString MomentOf(const ArchivedCopy& copy)
{
    return copy.changed.toString("dd/MM/yyyy 'à' HH:mm");
}

} // namespace archives
