#pragma once

#include <QString>

namespace forms {

/// Makes the spaces before ; : ? ! » and after « unbreakable. Runs of exclamation marks stay as they are, and so do
/// code between backquotes, command lines and the marks of Markdown.
QString WithFrenchSpaces(const QString& text);

} // namespace forms
