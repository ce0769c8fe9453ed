#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace basic {
namespace {

/// An unsigned decimal number: `whole` without leading zeros, `fraction` of fixed length.
struct DecimalText {
    std::string whole;
    std::string fraction;

    bool IsZero() const { return whole.empty() && fraction.find_first_not_of('0') == std::string::npos; }
};

/// A non-negative number with 15 significant digits, without exponent.
DecimalText ToSignificantDigits(double number)
{
    std::array<char, 40> buffer{};
    const auto result =
        std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::scientific, SignificantDigits - 1);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    const auto mark = text.find('e');
    std::string digits{text.substr(0, 1)};
    digits += text.substr(2, mark - 2);
    const int exponent = std::stoi(std::string(text.substr(mark + 1)));

    if (exponent < 0)
        return {"", std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits};
    const auto wholeLength = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() < wholeLength)
        digits.append(wholeLength - digits.size(), '0');
    DecimalText decimal{digits.substr(0, wholeLength), digits.substr(wholeLength)};
    decimal.whole.erase(0, decimal.whole.find_first_not_of('0'));
    return decimal;
}

/// Increments a string of digits; true on overflow.
bool CarryInto(std::string& digits)
{
    const auto raised = std::find_if(digits.rbegin(), digits.rend(), [](char digit) { return digit != '9'; });
    std::fill(digits.rbegin(), raised, '0');
    if (raised == digits.rend())
        return true;
    ++*raised;
    return false;
}

/// Cuts the fraction to `places` digits, rounding half away from zero.
void RoundTo(DecimalText& decimal, std::size_t places)
{
    if (decimal.fraction.size() <= places) {
        decimal.fraction.append(places - decimal.fraction.size(), '0');
        return;
    }
    const bool up = decimal.fraction[places] >= '5';
    decimal.fraction.resize(places);
    if (up && CarryInto(decimal.fraction) && CarryInto(decimal.whole))
        decimal.whole.insert(decimal.whole.begin(), '1');
}

bool IsPlace(QChar character)
{
    return character == '#' || character == '0';
}

/// Fills the mask's integer part, from right to left.
QString FillWhole(const QString& mask, std::string digits)
{
    const qsizetype leftmost = mask.indexOf('#') < 0   ? mask.indexOf('0')
                               : mask.indexOf('0') < 0 ? mask.indexOf('#')
                                                       : std::min(mask.indexOf('#'), mask.indexOf('0'));
    QString filled;
    for (qsizetype position = mask.size() - 1; position >= 0; --position) {
        const QChar place = mask[position];
        if (!IsPlace(place)) {
            filled.prepend(place);
            continue;
        }
        if (!digits.empty()) {
            filled.prepend(QLatin1Char(digits.back()));
            digits.pop_back();
        } else if (place == '0') {
            filled.prepend('0');
        }
        if (position == leftmost)
            filled.prepend(QString::fromStdString(digits));
    }
    return filled;
}

/// Fills the mask's fraction, from left to right.
QString FillFraction(const QString& mask, const std::string& digits)
{
    const std::size_t lastNeeded = digits.find_last_not_of('0') + 1; // 0 when all are zeros
    QString filled;
    std::size_t next = 0;
    for (const QChar place : mask) {
        if (!IsPlace(place)) {
            filled += place;
            continue;
        }
        if (place == '0' || next < lastNeeded)
            filled += QLatin1Char(digits[next]);
        ++next;
    }
    return filled;
}

} // namespace

QString Format(double number, const QString& mask)
{
    if (!std::isfinite(number))
        throw RuntimeError(Error::Overflow);
    const qsizetype point = mask.indexOf('.');
    const QString wholeMask = mask.left(point);
    const QString fractionMask = point < 0 ? QString() : mask.mid(point + 1);

    DecimalText decimal = ToSignificantDigits(std::abs(number));
    RoundTo(decimal, static_cast<std::size_t>(fractionMask.count('#') + fractionMask.count('0')));

    QString text = FillWhole(wholeMask, decimal.whole);
    if (point >= 0)
        text += "." + FillFraction(fractionMask, decimal.fraction);
    const bool showsMinus = number < 0 && !decimal.IsZero(); // no "-0.00"
    return showsMinus ? "-" + text : text;
}

} // namespace basic
