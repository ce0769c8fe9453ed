#pragma once

#include <QString>

namespace basic {

/// Most decimal digits in the text of a double.
inline constexpr int SignificantDigits = 15;

/// Whether the character is an ASCII digit.
constexpr bool IsDigit(char16_t character)
{
    return character >= u'0' && character <= u'9';
}
constexpr bool IsDigit(QChar character)
{
    return IsDigit(character.unicode());
}

/// Parses the number at the start of `text`, skipping all blanks, even between digits, up to the first character that
/// can't be part of a number; 0 if there is none. The decimal separator is the point.
double Val(const QString& text);

/// The number as text, with a leading blank unless negative: Str(7) is " 7".
QString Str(double number);

/// The shortest decimal text of the number, at most 15 significant digits, decimal point, no blanks: "150", "0.5",
/// "1E+20".
QString PlainText(double number);

/// Rounds half to even. Raises 6 outside 32 bits.
qint32 RoundToInt(double number);

/// Formats a number with a mask such as "# ### ##0.00": "#" is an optional digit, "0" a required digit, "." the decimal
/// point, a blank a literal that is written even if the digits around it are empty. Excess integer digits are written
/// at the leftmost digit. Rounds the 15-digit decimal text half away from zero: 2.675 with "0.00" is "2.68". A minus
/// sign comes before everything else.
QString Format(double number, const QString& mask);

/// The text left-justified and blank-filled to `width` characters; longer text is cut.
QString FixedText(const QString& text, int width);

} // namespace basic
