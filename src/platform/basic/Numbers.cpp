#include "platform/basic/Numbers.h"

#include "platform/basic/RuntimeError.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace basic {
namespace {

bool IsBlank(QChar character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

/// The text without blanks, up to the first character that can't be part of a number.
std::string NumberCharacters(const QString& text)
{
    std::string kept;
    for (const QChar character : text) {
        if (IsBlank(character))
            continue;
        const char letter = character.toLatin1();
        const bool possible = IsDigit(character) || (letter != 0 && std::strchr(".+-eEdD", letter) != nullptr);
        if (!possible)
            break;
        kept += letter == 'd' || letter == 'D' || letter == 'E' ? 'e' : letter;
    }
    return kept;
}

} // namespace

double Val(const QString& text)
{
    const std::string characters = NumberCharacters(text);
    const char* first = characters.data();
    const char* const last = first + characters.size();
    if (first != last && *first == '+') {
        ++first;
        if (first != last && *first == '-')
            return 0;
    }

    double number = 0;
    // No letters but the exponent's are left, so "inf" and "nan" can't occur.
    const auto [end, problem] = std::from_chars(first, last, number);
    if (problem == std::errc::result_out_of_range) {
        const std::string_view read(first, static_cast<std::size_t>(end - first));
        if (read.find("e-") == std::string_view::npos)
            throw RuntimeError(Error::Overflow);
        return 0;
    }
    return problem == std::errc() ? number : 0;
}

QString Str(double number)
{
    const QString text = PlainText(number);
    return text.startsWith('-') ? text : " " + text;
}

QString PlainText(double number)
{
    if (!std::isfinite(number))
        throw RuntimeError(Error::Overflow);
    if (number == 0)
        return "0"; // also for a zero with a minus sign
    std::array<char, 40> buffer{};
    const auto result =
        std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::general, SignificantDigits);
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data()).toUpper();
}

qint32 RoundToInt(double number)
{
    const double whole = std::nearbyint(number); // half to even in the default rounding mode
    if (!(whole >= std::numeric_limits<qint32>::min() && whole <= std::numeric_limits<qint32>::max()))
        throw RuntimeError(Error::Overflow);
    return static_cast<qint32>(whole);
}

QString FixedText(const QString& text, int width)
{
    return text.leftJustified(width, ' ', true);
}

} // namespace basic
