#include "practice/copies/CopyChoice.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "practice/fields/FieldValues.h"

#include <QDir>
#include <QFileInfo>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

QString NamesOf(const QList<archives::ArchivedCopy>& copies)
{
    QStringList names;
    for (const archives::ArchivedCopy& copy : copies)
        names << copy.Name();
    return names.isEmpty() ? QString("il n'y a aucune copie") : "copies : " + names.join(", ");
}

archives::ArchivedCopy CopyNamed(const QString& folder, const QString& text)
{
    const QList<archives::ArchivedCopy> copies = archives::ArchivedCopies(folder);
    const QDate day = DayOf(text);
    for (const archives::ArchivedCopy& copy : copies) {
        const bool isOfDay = day.isValid() && copy.Day() == day && copy.kind != archives::ArchivedCopy::Kind::Replaced;
        if (isOfDay || copy.Name().compare(text, Qt::CaseInsensitive) == 0)
            return copy;
    }
    if (QFileInfo(text).isFile())
        return archives::CopyAt(text);
    throw RuntimeError::Described(Error::FileNotFound,
                                  QString("La copie « %1 » n'existe pas ; %2.").arg(text, NamesOf(copies)));
}

} // namespace

archives::ArchivedCopy ChosenCopy(const QString& folder, const QString& name, const std::optional<QDate>& before)
{
    if (!name.isEmpty()) {
        const archives::ArchivedCopy copy = CopyNamed(folder, name);
        archives::RequireUsable(copy.path);
        return copy;
    }
    if (const auto newest = archives::NewestWholeCopy(folder, before))
        return *newest;
    throw RuntimeError::Described(Error::FileNotFound,
                                  QString("Il n'y a aucune copie entière%1.").arg(before ? " d'un jour passé" : ""));
}

QString WarningOf(const archives::ArchivedCopy& copy)
{
    const QString fault = archives::FaultOf(copy.path);
    return fault.isEmpty() ? QString() : "ATTENTION : " + fault + "\n";
}

void RequirePractice(const QString& folder)
{
    if (!QFileInfo(folder).isDir())
        throw RuntimeError::Described(Error::PathNotFound, QString("Le dossier « %1 » n'existe pas.").arg(folder));
    if (!QFileInfo::exists(host::PathIn(folder, data::ConfigurationFile)) &&
        !QFileInfo::exists(host::PathIn(folder, data::DatabaseFile)))
        throw RuntimeError::Described(Error::FileNotFound,
                                      QString("Le dossier « %1 » ne contient aucun cabinet.").arg(folder));
}

} // namespace practice
