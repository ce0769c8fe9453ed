#include "platform/store/Value.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"

#include <limits>

namespace store {

QString Value::Text() const
{
    if (const auto* text = std::get_if<QString>(&held))
        return *text;
    if (const auto* whole = std::get_if<qint64>(&held))
        return QString::number(*whole);
    if (const auto* real = std::get_if<double>(&held))
        return basic::PlainText(*real);
    throw basic::RuntimeError(basic::Error::InvalidNull);
}

double Value::Double() const
{
    if (const auto* real = std::get_if<double>(&held))
        return *real;
    if (const auto* whole = std::get_if<qint64>(&held))
        return static_cast<double>(*whole);
    throw basic::RuntimeError(IsNull() ? basic::Error::InvalidNull : basic::Error::TypeMismatch);
}

qint32 Value::Long() const
{
    const auto* whole = std::get_if<qint64>(&held);
    if (whole == nullptr)
        return basic::RoundToInt(Double());
    if (*whole < std::numeric_limits<qint32>::min() || *whole > std::numeric_limits<qint32>::max())
        throw basic::RuntimeError(basic::Error::Overflow);
    return qint32(*whole);
}

basic::Int16 Value::Integer() const
{
    return Long();
}

} // namespace store
