#include "archives/Archives.h"

#include "archives/Generations.h"
#include "archives/Leftovers.h"
#include "archives/Seal.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>
#include <algorithm>

namespace archives {
namespace {

/// Whether a copy may be kept under this name. A file of that name is an earlier copy of the same day, unless it is
/// newer.
bool IsFreeFor(const ArchivedCopy& present, const QString& generation)
{
    const QFileInfo before(generation);
    return !before.exists() || (before.isFile() && CopyAt(generation).changed <= present.changed);
}

/// Keeps the copy that is about to be replaced under the name of its day, unless it is unusable, of today or later.
/// Returns the path of what was in the way, if anything was.
QString KeepGeneration(const QString& path)
{
    constexpr int mostNumbers = 9;
    const ArchivedCopy present = CopyAt(path);
    const QDate day = present.changed.date();
    if (day >= host::Today())
        return {};
    const CopyCondition condition = ConditionOf(path);
    if (condition.kind == CopyCondition::Kind::Unusable)
        return {};
    // A changed copy keeps its seal, which shows it.
    const QByteArray digest = condition.kind == CopyCondition::Kind::Whole ? condition.digest : QByteArray("?");
    QString obstacle;
    for (int number = 1; number <= mostNumbers; ++number) {
        const QString generation = QFileInfo(path).absolutePath() + "/" + GenerationName(day, number);
        if (host::IsSameFile(path, generation))
            return obstacle;
        if (IsFreeFor(present, generation)) {
            try {
                const QString part = host::PartOf(generation);
                host::LinkFile(path, part);
                ReplaceSealed(part, generation, digest);
                return obstacle;
            } catch (const basic::RuntimeError& error) {
                if (error.Code() == basic::Error::DiskFull)
                    throw;
            }
        }
        if (obstacle.isEmpty() && !QFileInfo(generation).isFile())
            obstacle = generation;
    }
    return obstacle;
}

QStringList DatedNames(const QDir& copies)
{
    QStringList names = copies.entryList(QDir::Files | QDir::Hidden).filter(QRegularExpression("^ZEP_ONE \\d"));
    names.removeIf([](const QString& name) { return !GenerationDay(name).isValid(); });
    std::ranges::sort(names, {}, GenerationDay);
    return names;
}

void DeleteSurplusGenerations(const QDir& copies)
{
    for (const QString& name : SurplusGenerations(DatedNames(copies), host::Today()))
        RemoveSealed(copies.filePath(name));
}

/// Deletes copies until `bytes` fit on the disk: those that no rule keeps, then the oldest dated ones, but not the
/// newest two with that of the present copy. Deletes none if that isn't enough. Returns their days.
QList<QDate> MakeRoom(const QDir& copies, const ArchivedCopy& present, qint64 bytes)
{
    constexpr qsizetype neverDeleted = 2;
    const QStringList dated = DatedNames(copies);
    const bool isToBeDated = present.changed.date() < host::Today() && !dated.contains(GenerationName(present.Day()));
    QStringList deletable = SurplusGenerations(dated, host::Today());
    for (const QString& name : dated.first(qMax(0, dated.size() - neverDeleted + (isToBeDated ? 1 : 0))))
        if (!deletable.contains(name))
            deletable << name;

    qint64 room = QStorageInfo(copies).bytesAvailable();
    qsizetype count = 0;
    while (room < bytes && count < deletable.size())
        room += host::RoomOf(copies.filePath(deletable[count++]));
    QList<QDate> days;
    if (room < bytes)
        return days;
    for (const QString& name : deletable.first(count)) {
        RemoveSealed(copies.filePath(name));
        days << GenerationDay(name);
    }
    return days;
}

void ClearWriteProtection(const QString& target)
{
    constexpr int plain = 0;
    constexpr int archiveBit = 32;
    if (!host::FileExists(target, plain))
        return;
    const int attributes = host::FileAttributes(target);
    if (attributes != plain && attributes != archiveBit)
        host::SetFileAttributes(target, plain);
}

} // namespace

QString ArchiveNotes::Text() const
{
    QStringList sentences;
    if (!deletedDays.isEmpty()) {
        QStringList days;
        for (const QDate& day : deletedDays)
            days << day.toString("dd/MM/yyyy");
        sentences << "Le disque des archives était plein : les copies de ces jours ont été effacées pour faire place à "
                     "celle d'aujourd'hui : " +
                         days.join(", ") + ".";
    }
    if (!obstacle.isEmpty())
        sentences << QString("« %1 » occupe le nom d'une copie et a été laissé en place. La copie d'aujourd'hui est "
                             "faite.")
                         .arg(obstacle);
    return sentences.join("\n\n");
}

ArchiveNotes CopyToArchives(const QString& folder, const store::CopyProgress& progress)
{
    const QString source = host::PathIn(folder, data::DatabaseFile);
    const QString target = PlainCopyOf(folder);
    ClearWriteProtection(target);
    ArchiveNotes notes;
    const auto copy = [&] {
        CopyDatabase(source, target, {.progress = progress, .beforeReplacing = [&](const QString& present) {
                                          RemoveUnfinishedRestoration(folder);
                                          notes.obstacle = KeepGeneration(present);
                                      }});
    };
    const QDir copies(CopiesFolder(folder));
    try {
        copy();
    } catch (const basic::RuntimeError& error) {
        if (error.Code() != basic::Error::DiskFull)
            throw;
        constexpr qint64 beside = 256 * 1024; // seals, and what the file system needs for itself
        const qint64 bytes = QFileInfo(source).size() + QFileInfo(source + "-wal").size() + beside;
        notes.deletedDays = MakeRoom(copies, CopyAt(target), bytes);
        if (notes.deletedDays.isEmpty())
            throw;
        copy();
    }
    DeleteSurplusGenerations(copies);
    return notes;
}

} // namespace archives
