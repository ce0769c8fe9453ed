#include "practice/check/Repair.h"

#include "archives/Archives.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/Files.h"
#include "platform/store/FileState.h"
#include "practice/check/InPlaceRepair.h"
#include "practice/check/Rebuild.h"
#include "practice/check/SafetyCopy.h"

#include <QFile>
#include <QFileInfo>
#include <optional>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

/// None if the database stays damaged; nothing has changed then.
std::optional<RepairReport> RepairInPlace(const QString& database, const QString& archives, const QDateTime& moment)
{
    RepairReport report;
    try {
        const Mending mended = MendInPlace(
            database, [&](bool isDamaged) { report.copy = KeepCopy(database, isDamaged, archives, moment); });
        report.changes = mended.changes;
        report.doubts = mended.doubts;
        return report;
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::DamagedDatabase)
            throw;
        if (!report.copy.isEmpty())
            QFile::remove(report.copy);
        return std::nullopt;
    }
}

} // namespace

RepairReport RepairPractice(const QString& folder, const QDateTime& moment)
{
    const QString database = host::PathIn(folder, data::DatabaseFile);
    if (!QFileInfo(database).isFile())
        throw RuntimeError::Described(
            Error::DatabaseNotFound,
            QString("« %1 » n'est pas le dossier d'un cabinet : %2 manque.").arg(folder, data::DatabaseFile));
    if (store::IsInUse(host::BehindLinks(database)))
        throw RuntimeError::Described(
            Error::Locked,
            "Le cabinet est ouvert dans un programme : quittez-le, puis recommencez. Rien n'a été modifié.");
    archives::RemoveLeftovers(folder);
    const QString archives = host::PathIn(folder, data::ArchiveFolder);
    if (const auto report = RepairInPlace(database, archives, moment))
        return *report;
    return Rebuild(host::BehindLinks(database), archives, moment);
}

} // namespace practice
