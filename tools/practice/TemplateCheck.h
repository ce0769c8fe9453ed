#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// All mistakes of a report template, a line each: file, line and reason. Its select is held against the tables of an
/// empty practice; the file may be anywhere.
QStringList CheckReportTemplate(const QString& file);

} // namespace practice
