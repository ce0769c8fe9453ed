#include "practice/TemplateCheck.h"

#include "data/Practice.h"
#include "data/ReportTemplates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/pages/TemplateCheck.h"

#include <QTemporaryDir>

namespace practice {

QStringList CheckReportTemplate(const QString& file)
{
    const QTemporaryDir place;
    if (!place.isValid())
        throw basic::RuntimeError::Described(basic::Error::PathAccess, "Le dossier temporaire ne peut pas être créé.");
    const QString database = place.filePath(data::databaseFile);
    // The field added when a practice is first opened.
    dao::CreateDatabase(database, data::Schema() + "\nALTER TABLE Prov ADD COLUMN Mt2 REAL DEFAULT 0;");

    QStringList mistakes;
    for (const pages::Fault& fault :
         pages::CheckTemplate(file, {database, data::ReportTextSelect, data::ReportTextNames}))
        mistakes << pages::FaultText(file, fault);
    return mistakes;
}

} // namespace practice
