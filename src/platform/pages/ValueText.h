#pragma once

#include "platform/pages/Template.h"
#include "platform/store/Value.h"

/// Formatting of printed values.
namespace pages {

/// A value as printed in a column: by its choices, its mask or unchanged; empty for Null.
QString CellText(const Column& column, const store::Value& value);

/// A number formatted with a mask, without blanks before the first digit; plain text without a mask.
QString NumberText(double number, const QString& mask);

/// A text as printed: an amount formatted by a screen ("-   883 348.15", " 100.00 ") is reformatted with `mask`, or
/// just loses its extra blanks if there is none. Other texts are unchanged.
QString AmountText(const QString& text, const QString& mask = {});

/// As AmountText; amounts joined by "+" are added, an empty one counting as 0, and a sum of 0 is empty.
QString SumOfAmounts(const QString& text, const QString& mask);

/// The value as a summand: 0 for Null and text.
double NumberIn(const store::Value& value);

/// `text` as one line: control characters become blanks, surrounding blanks are removed, text longer than any sheet is
/// wide is cut.
QString SingleLine(const QString& text);

} // namespace pages
