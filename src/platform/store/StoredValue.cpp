#include "platform/store/StoredValue.h"

#include "platform/basic/Numbers.h"
#include "platform/store/Errors.h"

#include <cmath>
#include <limits>

namespace store {
namespace {

constexpr int IsoDateLength = 10; // yyyy-mm-dd

bool IsIsoDate(const char* text, int length)
{
    if (length != IsoDateLength || text[4] != '-' || text[7] != '-')
        return false;
    for (const int place : {0, 1, 2, 3, 5, 6, 8, 9}) {
        if (!basic::IsDigit(static_cast<char16_t>(text[place])))
            return false;
    }
    return true;
}

QString DayFirst(const char* iso)
{
    const char text[] = {iso[8], iso[9], '/', iso[5], iso[6], '/', iso[0], iso[1], iso[2], iso[3]};
    return QString::fromLatin1(text, IsoDateLength);
}

/// The ISO text of a dd/mm/yyyy date; raises 3421 if it doesn't exist.
QString IsoDate(const QString& dayFirst)
{
    const QStringView text = QStringView(dayFirst).trimmed();
    int numbers[] = {0, 0, 0}; // day, month, year
    bool isDate = text.size() == IsoDateLength;
    for (qsizetype place = 0, part = 0; isDate && place < IsoDateLength; ++place) {
        if (place == 2 || place == 5) {
            isDate = text[place] == u'/';
            ++part;
        } else {
            isDate = basic::IsDigit(text[place]);
            numbers[part] = numbers[part] * 10 + text[place].unicode() - u'0';
        }
    }
    if (!isDate || !QDate::isValid(numbers[2], numbers[1], numbers[0]))
        throw RuntimeError(Error::ConversionFailed);
    return QDate(numbers[2], numbers[1], numbers[0]).toString(Qt::ISODate);
}

/// A value as a number, parsing text.
Value Number(const Value& value)
{
    if (!std::holds_alternative<QString>(value.Raw()))
        return value;
    bool isNumber = false;
    const double number = value.Text().trimmed().toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        throw RuntimeError(Error::ConversionFailed);
    return number;
}

template <class Limits>
Value WholeNumber(const Value& value)
{
    const Value number = Number(value);
    const auto* const held = std::get_if<qint64>(&number.Raw());
    // Half to even in the default rounding mode.
    const double whole = held != nullptr ? static_cast<double>(*held) : std::nearbyint(number.Double());
    if (!(whole >= Limits::min() && whole <= Limits::max()))
        throw RuntimeError(Error::Overflow);
    return static_cast<qint64>(whole);
}

} // namespace

Value ValueOf(const StoredValue& stored, ColumnType type)
{
    switch (stored.kind) {
    case StoredValue::Kind::Null:
        return {};
    case StoredValue::Kind::Whole:
        return stored.whole;
    case StoredValue::Kind::Real:
        return stored.real;
    case StoredValue::Kind::Text:
        break;
    }
    const bool mayBeDate = type == ColumnType::Date || type == ColumnType::Any;
    if (mayBeDate && IsIsoDate(stored.text, stored.length))
        return DayFirst(stored.text);
    return QString::fromUtf8(stored.text, stored.length);
}

Value ValueOf(const Value& stored, ColumnType type)
{
    if (!std::holds_alternative<QString>(stored.Raw()))
        return stored;
    const QByteArray utf8 = stored.Text().toUtf8();
    StoredValue text;
    text.kind = StoredValue::Kind::Text;
    text.text = utf8.constData();
    text.length = qint32(utf8.size());
    return ValueOf(text, type);
}

Value ToColumn(const Value& value, ColumnType type)
{
    if (value.IsNull())
        return {};
    switch (type) {
    case ColumnType::Small:
        return WholeNumber<std::numeric_limits<qint16>>(value);
    case ColumnType::Whole:
        return WholeNumber<std::numeric_limits<qint32>>(value);
    case ColumnType::Real: {
        const double number = Number(value).Double();
        if (!std::isfinite(number))
            throw RuntimeError(Error::Overflow);
        return number;
    }
    case ColumnType::Date:
        return IsoDate(value.Text());
    case ColumnType::Text:
        return value.Text();
    case ColumnType::Any:
        break;
    }
    return value;
}

} // namespace store
