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

QStringList ReportTextsOf(const QString& templateName)
{
    static const struct {
        const char* name;
        int first;
        int last;
    } given[] = {
        {"ZEP_R1.RPT", 5, 10},  {"ZEP_R2.RPT", 4, 4},   {"ZEP_R3.RPT", 4, 4},   {"ZEP_R4.RPT", 4, 4},
        {"ZEP_DTAL.RPT", 4, 7}, {"ZEP_RCAP.RPT", 4, 7}, {"ZEP_RCP2.RPT", 4, 4}, {"ZEP_Rstt.RPT", 5, 8},
        {"ZEP_Supp.RPT", 4, 4}, {"Planning.RPT", 4, 4},
        {"ZEP_EVO1.RPT", 4, 6}, {"ZEP_EVO2.RPT", 4, 6},
    };
    QStringList texts;
    for (const auto& report : given)
        if (templateName.compare(QLatin1String(report.name), Qt::CaseInsensitive) == 0)
            for (int text = report.first; text <= report.last; ++text)
                texts << QStringLiteral("ch%1").arg(text);
    return texts;
}

bool HasReportTemplate(const QString& folder, const QString& name)
{
    constexpr int filesAndFolders = 16;
    return host::FileExists(host::PathIn(folder, name), filesAndFolders);
}

} // namespace data
