#pragma once

#include <QString>

namespace basic {

/// Decimal digits that a double's text shows at most.
inline constexpr int significantDigits = 15;

/// Whether the character is an ASCII digit.
constexpr bool IsDigit(char16_t character)
{
    return character >= u'0' && character <= u'9';
}
constexpr bool IsDigit(QChar character)
{
    return IsDigit(character.unicode());
}

/// Reads the number that `text` starts with: blanks are skipped (between digits too), reading stops at the first
/// character that can't belong to a number, a text without a number gives 0. The decimal mark is the point.
double Val(const QString& text);

/// The number as text with one leading blank when it isn't negative: Str(7) is " 7".
QString Str(double number);

/// The shortest decimal text of the number, at most 15 significant digits, point as mark, no blank: "150", "0.5",
/// "1E+20".
QString PlainText(double number);

/// The nearest whole number, a tie going to the even one. Raises 6 outside 32 bits.
qint32 RoundToInt(double number);

/// The number under a display mask such as "# ### ##0.00": "#" an optional digit, "0" a required digit, the point the
/// decimal mark, every blank a literal that is written even where the optional digits around it are empty.
/// Digits beyond the mask's leftmost place are written in that place. Rounds the 15-digit decimal text half away from
/// zero, so 2.675 under "0.00" is "2.68". A minus sign comes first of all.
QString Format(double number, const QString& mask);

/// The text left-justified and blank-filled to `width` characters; longer text is cut.
QString FixedText(const QString& text, int width);

} // namespace basic
