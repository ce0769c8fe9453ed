#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// All mistakes of a report template, a line each: file, line and reason, places among them that nothing fills: no
/// field of the select, or no text that the screen writes for the report of this file name. The select is held against
/// the tables of an empty practice; the file may be anywhere.
QStringList CheckReportTemplate(const QString& file);

} // namespace practice
