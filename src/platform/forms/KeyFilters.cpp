#include "platform/forms/KeyFilters.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"

#include <QStringList>
#include <cmath>

namespace forms {

namespace {

constexpr int LastSilentCode = 32;

bool IsOneOf(int keyCode, QStringView characters)
{
    return keyCode <= 0xFFFF && characters.contains(QChar(keyCode));
}

bool IsDateKey(qsizetype length, int keyCode)
{
    const auto isBetween = [keyCode](char first, char last) { return keyCode >= first && keyCode <= last; };
    if (length == 2 || length >= basic::DateLength) // DateAutoSlash has normally added the slash already
        return true;
    if (length == 0)
        return isBetween('0', '3');
    if (length == 3)
        return isBetween('0', '1');
    return isBetween('0', '9');
}

/// Whether the day is past the end of its month. False unless the month is two digits.
bool IsPastMonthEnd(const QString& day, const QString& month, double year)
{
    static const QStringList longMonths{"01", "03", "05", "07", "08", "10", "12"};
    static const QStringList shortMonths{"04", "06", "09", "11"};
    if (longMonths.contains(month))
        return basic::Val(day) > 31;
    if (shortMonths.contains(month))
        return basic::Val(day) > 30;
    if (month == "02") // text comparison; no century rule
        return day > (std::fmod(std::nearbyint(year), 4) == 0 ? QStringLiteral("29") : QStringLiteral("28"));
    return false;
}

} // namespace

int KeyFilterDigits(int& keyCode)
{
    if (keyCode > LastSilentCode && !IsOneOf(keyCode, u"1234567890"))
        keyCode = 0;
    return keyCode;
}

int KeyFilterDecimal(const QString& fieldText, int& keyCode)
{
    if (keyCode <= LastSilentCode)
        return keyCode;
    if (keyCode == ',') // the decimal key of a French keyboard
        keyCode = '.';
    const bool secondPoint = keyCode == '.' && fieldText.contains('.');
    if (secondPoint || !IsOneOf(keyCode, u"1234567890.-"))
        keyCode = 0;
    return keyCode;
}

int KeyFilterDate(const QString& fieldText, int& keyCode)
{
    if (keyCode != KeyBackspace && !IsDateKey(fieldText.size(), keyCode)) {
        TheDesk().Beep();
        keyCode = 0;
    }
    return keyCode;
}

QString DateAutoSlash(QString& text)
{
    const qsizetype length = text.trimmed().size();
    if (length == 2 || length == 5)
        text += '/';
    return text;
}

int DateIsInvalid(const QString& text)
{
    const QString day = text.left(2);
    const QString month = text.mid(3, 2);
    const double year = basic::Val(text.right(4));

    int result = 0;
    for (const bool fails :
         {basic::Val(day) > 31, basic::Val(day) < 1, basic::Val(month) > 12, year < 1900, basic::Val(month) < 1,
          IsPastMonthEnd(day, month, year), text.size() < basic::DateLength}) {
        if (fails) {
            TheDesk().Beep();
            result = 1;
        }
    }
    return result;
}

} // namespace forms
