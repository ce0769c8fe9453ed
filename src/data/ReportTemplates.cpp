#include "data/ReportTemplates.h"

#include "platform/host/Files.h"

#include <QDir>
#include <QFile>

// Outside any namespace, as the resource's own function is.
static void LoadReportResources()
{
    Q_INIT_RESOURCE(reports);
}

namespace data {

QList<ReportTemplate> ReportTemplates()
{
    LoadReportResources();
    QList<ReportTemplate> templates;
    const QDir compiledIn(":/reports");
    for (const QString& name : compiledIn.entryList(QDir::Files, QDir::Name)) {
        QFile file(compiledIn.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            templates.append({name, file.readAll()});
    }
    return templates;
}

bool HasReportTemplate(const QString& folder, const QString& name)
{
    constexpr int filesAndFolders = 16;
    return host::FileExists(host::PathIn(folder, name), filesAndFolders);
}

} // namespace data
