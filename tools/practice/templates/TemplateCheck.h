#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// All errors of a report template, one per line: file, line and reason. They include placeholders that nothing fills:
/// a field that the select doesn't have, or a text that the screen doesn't write for the report of this file name. The
/// select is checked against an empty practice; the file may be anywhere.
QStringList CheckReportTemplate(const QString& file);

} // namespace practice
