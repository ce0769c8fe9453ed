#include "archives/Leftovers.h"

#include "archives/Archives.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/Files.h"
#include "platform/store/FileState.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace archives {
namespace {

/// Partial files of copies, restorations and repairs, logs of a kept file that was never completed, and seals whose
/// copy is gone.
void RemovePartialFiles(const QDir& folder)
{
    static const QRegularExpression partial(R"(^ZEP_ONE.*\.MDB(\.sceau)?\.part\d*(-wal|-shm|-journal)?$)",
                                            QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression beside(
        R"(^(ZEP_ONE avant .*\.MDB)(?:-wal|-shm|-journal)$|^(ZEP_ONE.*\.MDB)\.sceau$)",
        QRegularExpression::CaseInsensitiveOption);
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
        const QRegularExpressionMatch found = beside.match(name);
        const QString copy = found.captured(found.lastCapturedIndex());
        if (partial.match(name).hasMatch() || (found.hasMatch() && !folder.exists(copy)))
            QFile::remove(folder.filePath(name));
    }
}

} // namespace

void RemoveUnfinishedRestoration(const QString& folder)
{
    const QString database = host::BehindLinks(host::PathIn(folder, data::DatabaseFile));
    host::RemoveDatabase(database + ".part");
    for (const ArchivedCopy& copy : ArchivedCopies(folder))
        if (copy.kind == ArchivedCopy::Kind::Replaced && host::IsSameFile(copy.path, database))
            QFile::remove(copy.path);
}

void RemoveLeftovers(const QString& folder)
{
    const QString copies = CopiesFolder(folder);
    if (!QFileInfo(copies).isDir())
        return;
    try {
        const host::FolderLock alone(copies, host::FolderLock::Wait::No);
        RemoveUnfinishedRestoration(folder);
        RemovePartialFiles(QDir(copies));
        RemovePartialFiles(QFileInfo(host::BehindLinks(host::PathIn(folder, data::DatabaseFile))).absoluteDir());
    } catch (const basic::RuntimeError&) {
        // A copy is being made, or the folder can't be written: another opening will do.
    }
}

} // namespace archives
