#include "practice/TemplateCheck.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/report/Content.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace practice {

QStringList CheckReportTemplate(const QString& file)
{
    const QTemporaryDir place;
    if (!place.isValid())
        throw basic::RuntimeError::Described(basic::Error::PathAccess, "Le dossier temporaire ne peut pas être créé.");
    const QString database = place.filePath(data::databaseFile);
    // The field that the first opening of a practice adds.
    dao::CreateDatabase(database, data::Schema() + "\nALTER TABLE Prov ADD COLUMN Mt2 REAL DEFAULT 0;");

    QStringList mistakes;
    const QString name = QFileInfo(file).fileName();
    for (const report::Fault& fault : report::CheckTemplate(file, database))
        mistakes << (fault.line > 0 ? QString("%1, ligne %2 : %3").arg(name).arg(fault.line).arg(fault.reason)
                                    : QString("%1 : %2").arg(name, fault.reason));
    return mistakes;
}

} // namespace practice
