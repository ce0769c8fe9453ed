#pragma once

#include <QString>

namespace practice {

/// The kinds of file that commands write for their user.
enum class OutputKind : quint8 { Pdf, Csv };

/// Why an existing file may not be replaced by one of this kind, in French; empty if it may. Only a regular file, not
/// behind a link, that is of the same kind by its name and its first bytes may be: never a database, its log, a
/// configuration, a workgroup file or a template, under whatever name.
QString WhyNotReplaceable(const QString& path, OutputKind kind);

/// Raises 58 with that reason.
void RequireReplaceable(const QString& path, OutputKind kind);

/// Raises 58 when the name is one of a practice's files, even if there is no such file: a log, for example, would be
/// taken for that of the database beside it.
void RequireFreeName(const QString& path);

} // namespace practice
