#pragma once

#include "platform/pages/Template.h"

#include <QByteArray>
#include <optional>

namespace pages {

inline constexpr int DeepestNesting = 8;

/// Checks a template's text before it is parsed: it must be UTF-8, and lists, tables and dotted names must not be
/// nested deeper than DeepestNesting, which could overflow the parser's stack.
std::optional<Fault> FindUnreadableText(const QByteArray& text);

/// Explains why the parser has refused a text at `line`, from 1. The fault's line is where the user must correct it:
/// that of an unclosed quote or bracket rather than the line at which the parser gave up.
Fault ExplainSyntaxError(const QByteArray& text, int line);

} // namespace pages
