#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// All errors of a report template: file, line and reason. They include placeholders that nothing fills: fields that
/// the select doesn't return, and texts that no screen writes for the report of this file name. The select is checked
/// against an empty practice, so the file may be in any folder.
QStringList CheckReportTemplate(const QString& file);

} // namespace practice
