#include "platform/basic/Int16.h"

#include "platform/basic/RuntimeError.h"

#include <limits>

namespace basic {
namespace {

qint16 Narrow(qint64 value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        throw RuntimeError(Error::Overflow);
    return static_cast<qint16>(value);
}

} // namespace

Int16::Int16(qint64 value) : number(Narrow(value)) {}

Int16& Int16::operator+=(qint64 step)
{
    qint64 result = 0;
    if (__builtin_add_overflow(qint64{number}, step, &result))
        throw RuntimeError(Error::Overflow);
    number = Narrow(result);
    return *this;
}

Int16& Int16::operator-=(qint64 step)
{
    qint64 result = 0;
    if (__builtin_sub_overflow(qint64{number}, step, &result))
        throw RuntimeError(Error::Overflow);
    number = Narrow(result);
    return *this;
}

Int16& Int16::operator*=(qint64 factor)
{
    qint64 result = 0;
    if (__builtin_mul_overflow(qint64{number}, factor, &result))
        throw RuntimeError(Error::Overflow);
    number = Narrow(result);
    return *this;
}

Int16 Int16::operator++(int)
{
    const Int16 before = *this;
    ++*this;
    return before;
}

Int16 Int16::operator--(int)
{
    const Int16 before = *this;
    --*this;
    return before;
}

Int16 Sum(Int16 left, Int16 right)
{
    return left += right;
}

Int16 Product(Int16 left, Int16 right)
{
    return left *= right;
}

} // namespace basic
