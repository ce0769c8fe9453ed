#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// All errors of a report template, one per line: file, line and reason. The select is checked against an empty
/// practice; the file may be anywhere.
QStringList CheckReportTemplate(const QString& file);

} // namespace practice
