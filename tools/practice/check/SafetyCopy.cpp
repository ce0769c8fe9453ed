#include "practice/check/SafetyCopy.h"

#include "archives/ArchiveCopy.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/OwnerOnly.h"

#include <QDir>
#include <QFileInfo>

namespace practice {
namespace {

using basic::RuntimeError;

/// A path at which there is neither a file nor a broken link.
QString FreeName(const QString& archives, const QDateTime& moment)
{
    const QString name = archives + "/ZEP_ONE avant réparation " + moment.toString("yyyy-MM-dd HH-mm-ss");
    QString target = name + ".MDB";
    for (int other = 2; QFileInfo::exists(target) || QFileInfo(target).isSymLink(); ++other)
        target = QString("%1 (%2).MDB").arg(name).arg(other);
    return target;
}

} // namespace

QString KeepCopy(const QString& database, bool isDamaged, const QString& archives, const QDateTime& moment)
{
    const auto ownerOnly = host::ForOwnerOnly();
    QDir().mkpath(archives);
    const QString target = FreeName(archives, moment);
    try {
        if (isDamaged)
            archives::CopyDamagedDatabase(database, target);
        else
            archives::CopyDatabase(database, target);
    } catch (const RuntimeError& error) {
        throw RuntimeError::Described(
            error.Code(), QString("La copie de sécurité ne peut pas être faite dans « %1 » (%2). Rien n'a été modifié.")
                              .arg(archives, error.Description()));
    }
    return target;
}

} // namespace practice
