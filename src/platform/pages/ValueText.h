#pragma once

#include "platform/dao/Value.h"
#include "platform/pages/Template.h"

/// How values are written on paper.
namespace pages {

/// What a column prints of a value: its choice, its mask or the value as it is; nothing for Null.
QString CellText(const Column& column, const dao::Value& value);

/// A number under a mask, without the blanks that the mask leaves before the first digit; plain text without a mask.
QString NumberText(double number, const QString& mask);

/// A text as it is printed: an amount that a screen has written under a mask ("-   883 348.15", " 100.00 ") is written
/// under `mask`, or without a mask loses the blanks of its empty digits. Other texts are unchanged.
QString AmountText(const QString& text, const QString& mask = {});

/// As AmountText; amounts joined by "+" are added, an empty one counting as 0, and a sum of 0 is empty.
QString SumOfAmounts(const QString& text, const QString& mask);

/// The number of a value in a sum: 0 for Null and for text.
double NumberIn(const dao::Value& value);

/// `text` on one line: tabs, line breaks and other control characters become blanks, blanks around it are removed; text
/// longer than any sheet is wide is cut.
QString SingleLine(const QString& text);

} // namespace pages
