#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace data {

/// A report template as installed; users may change the copy in their data folder.
struct ReportTemplate {
    QString name; ///< file name, "ZEP_R1.RPT"
    QByteArray text;
};

QList<ReportTemplate> ReportTemplates();

/// What templates print at {ch1} to {ch10} and {ch30}: the texts of a practice, read by this select. An
/// empty ch30 loses its parentheses.
inline const QStringList ReportTextNames = {"ch1", "ch2", "ch3", "ch4",  "ch5", "ch6",
                                            "ch7", "ch8", "ch9", "ch10", "ch30"};
inline const QString ReportTextSelect =
    QStringLiteral("select ch1, ch2, ch3, ch4, ch5, ch6, ch7, ch8, ch9, ch10, nullif(ch30, '()') as ch30 "
                   "from textes limit 1");

/// The texts that a screen writes before it prints this template, besides the letterhead: "ch4" to "ch7". Others keep
/// the values of an earlier report. Empty for an unknown template.
QStringList ReportTextsOf(const QString& templateName);

/// Whether the folder has a template of this name, case-insensitive.
bool HasReportTemplate(const QString& folder, const QString& name);

} // namespace data
