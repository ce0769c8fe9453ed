#include "practice/fields/FieldValues.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"

#include <QRegularExpression>
#include <QTime>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace practice {
namespace {

using enum FieldKind;

ReadValue Unreadable(const QString& reason)
{
    return {.value = {}, .problem = reason};
}

/// The number written by `fewest` to `most` decimal digits; none for any other text.
std::optional<int> DigitsAlone(QStringView text, qsizetype fewest, qsizetype most)
{
    const bool areDigits = std::ranges::all_of(text, [](QChar each) { return basic::IsDigit(each); });
    if (!areDigits || text.size() < fewest || text.size() > most)
        return std::nullopt;
    return text.toInt();
}

ReadValue ReadWhole(const QString& text, Limits limits)
{
    constexpr qsizetype mostDigits = 18;
    const bool hasSign = text.startsWith('-') || text.startsWith('+');
    const QStringView digits = QStringView(text).mid(hasSign ? 1 : 0);
    const bool areDigits = std::ranges::all_of(digits, [](QChar each) { return basic::IsDigit(each); });
    if (!areDigits || digits.isEmpty())
        return Unreadable(QString("« %1 » n'est pas un nombre entier").arg(text));
    const qint64 number = digits.size() <= mostDigits ? text.toLongLong() : std::numeric_limits<qint64>::max();
    if (number < limits.lowest || number > limits.highest)
        return Unreadable(
            QString("%1 est hors de l'intervalle %2 à %3").arg(text).arg(limits.lowest).arg(limits.highest));
    return {number, {}};
}

ReadValue ReadDate(const QString& text)
{
    static const QRegularExpression midnight(R"([ T]0?0:00(:00(\.0+)?)?$)");
    static const QRegularExpression shortYear(R"(^\d{1,2}[/.-]\d{1,2}[/.-]\d{2}( .*)?$)");
    const QDate date = DayOf(text.contains(':') ? QString(text).remove(midnight) : text);
    if (date.isValid())
        return {basic::DateText(date), {}};
    if (shortYear.match(text).hasMatch())
        return Unreadable(QString("l'année de « %1 » n'a que deux chiffres, il en faut quatre (avec mdb-export : "
                                  "-D '%Y-%m-%d' -T '%Y-%m-%d %H:%M:%S')")
                              .replace("%1", text));
    return Unreadable(QString("« %1 » n'est pas une date (jj/mm/aaaa ou aaaa-mm-jj)").arg(text));
}

ReadValue ReadTime(const QString& text)
{
    // Databases with a combined type for date and time store a time on this day.
    static const QString dayOfTimes = "1899-12-30 ";
    const QStringView time = QStringView(text).mid(text.startsWith(dayOfTimes) ? dayOfTimes.size() : 0);
    const QList<QStringView> parts = time.split(':');
    const auto hour = DigitsAlone(parts[0], 1, 2);
    const auto minute = DigitsAlone(parts.value(1), 2, 2);
    const auto second = parts.size() == 3 ? DigitsAlone(parts[2], 2, 2) : 0;
    if (parts.size() > 3 || !hour || !minute || !second || !QTime::isValid(*hour, *minute, *second))
        return Unreadable(QString("« %1 » n'est pas une heure (HH:MM)").arg(text));
    return {QTime(*hour, *minute).toString("HH:mm"), {}};
}

/// Replaces blanks of any kind by spaces.
QString WithPlainBlanks(QString text)
{
    for (QChar& character : text) {
        if (character.category() == QChar::Separator_Space)
            character = ' ';
    }
    return text;
}

ReadValue ReadAmount(const QString& text)
{
    static const QRegularExpression amount(
        R"(^[+-]? ?(?<whole>\d{1,3}(?: \d{3})+|\d*)(?:(?<mark>[.,])(?<part>\d*))?(?:[eE][+-]?\d{1,3})?$)");
    static const QRegularExpression groupedByCommas(R"(^[+-]?\d{1,3}(,\d{3})+(\.\d*)?$)");
    QString digits = WithPlainBlanks(text);
    const QRegularExpressionMatch parts = amount.match(digits);
    const bool endsAmbiguously = parts.capturedView(u"mark") == QStringView(u",") && parts.capturedLength(u"part") == 3;
    if (endsAmbiguously || groupedByCommas.match(text).hasMatch())
        return Unreadable(QString("« %1 » : une virgule devant trois chiffres peut se lire de deux façons ; écrivez "
                                  "par exemple 1000 ou 1,00")
                              .arg(text));
    if (!parts.hasMatch() || (parts.capturedView(u"whole").isEmpty() && parts.capturedView(u"part").isEmpty()))
        return Unreadable(QString("« %1 » n'est pas un montant").arg(text));
    const double number = digits.remove(' ').replace(',', '.').toDouble();
    if (!(std::abs(number) < AmountLimit))
        return Unreadable(QString("le montant %1 est trop grand").arg(text));
    return {number + 0.0, {}}; // no negative zero
}

} // namespace

QDate DayOf(const QString& text)
{
    const bool isDayFirst = text.contains('/');
    const QList<QStringView> parts = QStringView(text).split(isDayFirst ? u'/' : u'-');
    if (parts.size() != 3)
        return {};
    const auto year = DigitsAlone(parts[isDayFirst ? 2 : 0], 4, 4);
    const auto month = DigitsAlone(parts[1], isDayFirst ? 1 : 2, 2);
    const auto day = DigitsAlone(parts[isDayFirst ? 0 : 2], isDayFirst ? 1 : 2, 2);
    return year && month && day && *year >= FirstYear ? QDate(*year, *month, *day) : QDate();
}

bool IsActType(const QString& text)
{
    static const QRegularExpression code(R"(\A(C|K([0-9]|[12][0-9]|30))\z)");
    return code.match(text).hasMatch();
}

ReadValue ReadField(const FieldRule& rule, const QString& text)
{
    if (text.isEmpty())
        return rule.missing == Missing::Fault ? Unreadable("une valeur est obligatoire") : ReadValue{};
    if (text.contains(QChar::Null))
        return Unreadable("la valeur contient un caractère nul");
    switch (rule.kind) {
    case Key:
    case Reference:
    case Code:
    case Month:
    case Year:
        return ReadWhole(text, LimitsOf(rule));
    case FieldKind::Date:
    case DayText:
        return ReadDate(text);
    case Time:
        return ReadTime(text);
    case Amount:
        return ReadAmount(text);
    case ActType:
        return IsActType(text.toUpper())
                   ? ReadValue{text.toUpper(), {}}
                   : Unreadable(QString("« %1 » n'est pas un code d'acte (C, K0 à K30)").arg(text));
    case Text:
        break;
    }
    return {text, {}};
}

} // namespace practice
