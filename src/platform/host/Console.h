#pragma once

#include <QIODevice>
#include <QString>

#include <memory>

namespace host {

enum class Standard : quint8 { Input, Output, Errors };

/// A standard stream of a command, as UTF-8, whatever the console's encoding is. Unbuffered.
std::unique_ptr<QIODevice> OpenStandard(Standard stream);

/// Whether a person reads or types there.
bool IsTerminal(Standard stream);

/// Whether the path leads to a pipe, a terminal or another device that takes a stream of bytes.
bool IsStream(const QString& path);

/// Whether the path is a name of the standard output: a link to it, or the same pipe.
bool IsStandardOutput(const QString& path);

/// Lets a command draw where there is no display. Call it before the application is made.
void DrawWithoutDisplay();

/// A text as one argument in a command line that a person copies into a terminal.
QString QuotedArgument(const QString& text);

} // namespace host
