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

QString NamesOf(const QList<data::ArchivedCopy>& copies)
{
    QStringList names;
    for (const data::ArchivedCopy& copy : copies)
        names << copy.Name();
    return names.isEmpty() ? QString("il n'y a aucune copie") : "copies : " + names.join(", ");
}

data::ArchivedCopy CopyNamed(const QString& folder, const QString& text)
{
    const QList<data::ArchivedCopy> copies = data::ArchivedCopies(folder);
    const QDate day = DayOf(text);
    for (const data::ArchivedCopy& copy : copies) {
        const bool isOfDay = day.isValid() && copy.Day() == day && copy.kind != data::ArchivedCopy::Kind::Replaced;
        if (isOfDay || copy.Name().compare(text, Qt::CaseInsensitive) == 0)
            return copy;
    }
    if (QFileInfo(text).isFile())
        return data::CopyAt(text);
    throw RuntimeError::Described(Error::FileNotFound,
                                  QString("La copie « %1 » n'existe pas ; %2.").arg(text, NamesOf(copies)));
}

} // namespace

data::ArchivedCopy ChosenCopy(const QString& folder, const QString& name, const std::optional<QDate>& before)
{
    if (!name.isEmpty()) {
        const data::ArchivedCopy copy = CopyNamed(folder, name);
        data::RequireUsable(copy.path);
        return copy;
    }
    if (const auto newest = data::NewestWholeCopy(folder, before))
        return *newest;
    throw RuntimeError::Described(Error::FileNotFound,
                                  QString("Il n'y a aucune copie entière%1.").arg(before ? " d'un jour passé" : ""));
}

QString WarningOf(const data::ArchivedCopy& copy)
{
    const QString fault = data::FaultOf(copy.path);
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
