#include "platform/basic/Dates.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"

#include <QStringList>

namespace basic {
namespace {

constexpr int FirstYear = 100;
constexpr int LastYear = 9999;

/// The digit groups of the text; raises 13 if it contains a letter: "12 mai" isn't a numeric date.
QStringList DigitGroups(const QString& text)
{
    QStringList groups;
    bool inGroup = false;
    for (const QChar character : text) {
        if (IsDigit(character)) {
            if (!inGroup)
                groups << QString();
            groups.last() += character;
        } else if (character.isLetterOrNumber()) {
            throw RuntimeError(Error::TypeMismatch);
        }
        inGroup = IsDigit(character);
    }
    return groups;
}

/// One- and two-digit years are 1930 to 2029.
int FullYear(const QString& digits)
{
    const int year = digits.toInt();
    if (digits.size() > 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

const QDate& Valid(const QDate& date)
{
    if (!date.isValid())
        throw RuntimeError(Error::TypeMismatch);
    return date;
}

} // namespace

QDate DateValue(const QString& text)
{
    QStringList groups = DigitGroups(text);
    if (groups.size() != 3)
        throw RuntimeError(Error::TypeMismatch);
    if (groups.first().size() == 4)
        groups.swapItemsAt(0, 2);
    const bool tooLong = groups[0].size() > 2 || groups[1].size() > 2 || groups[2].size() > 4;
    const int day = groups[0].toInt();
    const int month = groups[1].toInt();
    const int year = FullYear(groups[2]);
    if (tooLong || day < 1 || day > 31 || month < 1 || month > 12 || year < FirstYear)
        throw RuntimeError(Error::TypeMismatch);
    return QDate(year, month, 1).addDays(day - 1);
}

bool IsDate(const QString& text)
{
    try {
        DateValue(text);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

QString DateText(const QDate& date)
{
    return date.toString("dd/MM/yyyy");
}

QDate AddDays(const QDate& date, int days)
{
    const QDate moved = Valid(date).addDays(days);
    if (!moved.isValid() || moved.year() < FirstYear || moved.year() > LastYear)
        throw RuntimeError(Error::Overflow);
    return moved;
}

int DaysBetween(const QDate& from, const QDate& to)
{
    return static_cast<int>(Valid(from).daysTo(Valid(to)));
}

int Weekday(const QDate& date)
{
    return Valid(date).dayOfWeek() % 7 + 1;
}

QString QueryDate(const QString& dayFirstText)
{
    return dayFirstText.mid(3, 2) + "/" + dayFirstText.left(2) + "/" + dayFirstText.right(4);
}

QString DateToQueryText(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return "..../.../...";

    QString groups[3]; // day, month, year
    int group = 0;
    for (const QChar character : trimmed) {
        if (!IsDigit(character))
            ++group;
        else if (group < 3)
            groups[group] += character;
    }
    return groups[2] + "/" + groups[1] + "/" + groups[0];
}

} // namespace basic
