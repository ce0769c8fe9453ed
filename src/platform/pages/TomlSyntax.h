#pragma once

#include "platform/pages/Template.h"

#include <QByteArray>
#include <optional>

namespace pages {

inline constexpr int DeepestNesting = 8;

/// What rules a template's text out before it is parsed: text that isn't UTF-8, and lists, tables or dotted names
/// nested deeper than DeepestNesting, which the parser would follow until its stack is exhausted.
std::optional<Fault> FindUnreadableText(const QByteArray& text);

/// The mistake in words for a text that the parser has refused in `line`, from 1. The fault's line is the one to mend:
/// that of an opening quote or bracket whose end is missing comes before the line in which the parser gave up.
Fault ExplainSyntaxError(const QByteArray& text, int line);

} // namespace pages
