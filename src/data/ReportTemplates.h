#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace data {

/// A report template as the program brings it; users change the copy in their data folder.
struct ReportTemplate {
    QString name; ///< file name, "ZEP_R1.RPT"
    QByteArray text;
};

QList<ReportTemplate> ReportTemplates();

/// Whether the folder has a template of this name, in whatever upper and lower case.
bool HasReportTemplate(const QString& folder, const QString& name);

} // namespace data
