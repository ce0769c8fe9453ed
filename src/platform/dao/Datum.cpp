#include "platform/dao/Datum.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"

#include <cmath>
#include <limits>

namespace dao {
namespace {

constexpr int isoDateLength = 10; // yyyy-mm-dd

bool IsIsoDate(const char* text, int length)
{
    if (length != isoDateLength || text[4] != '-' || text[7] != '-')
        return false;
    for (const int place : {0, 1, 2, 3, 5, 6, 8, 9}) {
        if (!basic::IsDigit(char16_t(text[place])))
            return false;
    }
    return true;
}

QString DayFirst(const char* iso)
{
    const char16_t text[isoDateLength] = {char16_t(iso[8]), char16_t(iso[9]), u'/',
                                          char16_t(iso[5]), char16_t(iso[6]), u'/',
                                          char16_t(iso[0]), char16_t(iso[1]), char16_t(iso[2]),
                                          char16_t(iso[3])};
    return QString(reinterpret_cast<const QChar*>(text), isoDateLength);
}

/// The ISO text of a dd/mm/yyyy date that exists; raises 3421.
std::string IsoDate(const QString& dayFirst)
{
    const QByteArray text = dayFirst.trimmed().toLatin1();
    const bool shaped = text.size() == isoDateLength && text[2] == '/' && text[5] == '/';
    if (!shaped)
        throw basic::RuntimeError(basic::Error::ConversionFailed);
    const std::string iso =
        text.sliced(6, 4).toStdString() + '-' + text.sliced(3, 2).toStdString() + '-' + text.first(2).toStdString();
    if (!IsIsoDate(iso.data(), isoDateLength) || !QDate::fromString(QString::fromStdString(iso), Qt::ISODate).isValid())
        throw basic::RuntimeError(basic::Error::ConversionFailed);
    return iso;
}

double NumberIn(const QString& text)
{
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        throw basic::RuntimeError(basic::Error::ConversionFailed);
    return number;
}

qint64 WholeWithin(double number, qint64 lowest, qint64 highest)
{
    const double whole = std::nearbyint(number); // the default rounding sends a tie to the even number
    if (!(whole >= double(lowest) && whole <= double(highest)))
        throw basic::RuntimeError(basic::Error::Overflow);
    return qint64(whole);
}

Datum StoredWhole(const Value& value, qint64 lowest, qint64 highest)
{
    if (const auto* whole = std::get_if<qint64>(&value.Raw())) {
        if (*whole < lowest || *whole > highest)
            throw basic::RuntimeError(basic::Error::Overflow);
        return Datum::Of(*whole);
    }
    if (const auto* real = std::get_if<double>(&value.Raw()))
        return Datum::Of(WholeWithin(*real, lowest, highest));
    return Datum::Of(WholeWithin(NumberIn(value.Text()), lowest, highest));
}

Datum StoredReal(const Value& value)
{
    if (std::holds_alternative<QString>(value.Raw()))
        return Datum::Of(NumberIn(value.Text()));
    const double number = value.Double();
    if (!std::isfinite(number))
        throw basic::RuntimeError(basic::Error::Overflow);
    return Datum::Of(number);
}

} // namespace

Datum Datum::Of(qint64 number)
{
    Datum made;
    made.kind = Kind::Whole;
    made.whole = number;
    return made;
}

Datum Datum::Of(double number)
{
    Datum made;
    made.kind = Kind::Real;
    made.real = number;
    return made;
}

Datum Datum::Of(std::string text)
{
    Datum made;
    made.kind = Kind::Text;
    made.text = std::move(text);
    return made;
}

Seen::Seen(const Cell& cell, const char* arena) : kind(cell.kind)
{
    if (kind == Kind::Whole) {
        whole = cell.whole;
    } else if (kind == Kind::Real) {
        real = cell.real;
    } else if (kind == Kind::Text) {
        text = arena + cell.offset;
        length = int(cell.length);
    }
}

Seen::Seen(const Datum& datum)
    : kind(datum.kind), whole(datum.whole), real(datum.real), text(datum.text.data()), length(int(datum.text.size()))
{
}

QString TextOf(const Seen& seen, ColumnType type)
{
    switch (seen.kind) {
    case Kind::Null:
        throw basic::RuntimeError(basic::Error::InvalidNull);
    case Kind::Whole:
        return QString::number(seen.whole);
    case Kind::Real:
        return basic::PlainText(seen.real);
    case Kind::Text:
        break;
    }
    const bool mayBeDate = type == ColumnType::Date || type == ColumnType::Any;
    if (mayBeDate && IsIsoDate(seen.text, seen.length))
        return DayFirst(seen.text);
    return QString::fromUtf8(seen.text, seen.length);
}

double DoubleOf(const Seen& seen)
{
    if (seen.kind == Kind::Real)
        return seen.real;
    if (seen.kind == Kind::Whole)
        return double(seen.whole);
    throw basic::RuntimeError(seen.kind == Kind::Null ? basic::Error::InvalidNull : basic::Error::TypeMismatch);
}

qint32 LongOf(const Seen& seen)
{
    if (seen.kind == Kind::Whole) {
        if (seen.whole < std::numeric_limits<qint32>::min() || seen.whole > std::numeric_limits<qint32>::max())
            throw basic::RuntimeError(basic::Error::Overflow);
        return qint32(seen.whole);
    }
    return basic::RoundToInt(DoubleOf(seen));
}

Value ValueOf(const Seen& seen, ColumnType type)
{
    switch (seen.kind) {
    case Kind::Null:
        return {};
    case Kind::Whole:
        return seen.whole;
    case Kind::Real:
        return seen.real;
    case Kind::Text:
        break;
    }
    return TextOf(seen, type);
}

Datum Stored(const Value& value, ColumnType type)
{
    if (value.IsNull())
        return {};
    switch (type) {
    case ColumnType::Small:
        return StoredWhole(value, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max());
    case ColumnType::Whole:
        return StoredWhole(value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    case ColumnType::Real:
        return StoredReal(value);
    case ColumnType::Date:
        return Datum::Of(IsoDate(value.Text()));
    case ColumnType::Any:
        if (const auto* whole = std::get_if<qint64>(&value.Raw()))
            return Datum::Of(*whole);
        if (const auto* real = std::get_if<double>(&value.Raw()))
            return Datum::Of(*real);
        break;
    case ColumnType::Text:
        break;
    }
    return Datum::Of(value.Text().toStdString());
}

} // namespace dao
