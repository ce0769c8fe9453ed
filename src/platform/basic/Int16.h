#pragma once

#include <QtGlobal>

namespace basic {

/// A signed 16-bit counter. Arithmetic outside -32768 to 32767 raises error 6.
class Int16 {
public:
    constexpr Int16() = default;
    Int16(qint64 value); // implicit: counters are used like plain numbers

    constexpr operator int() const { return number; }

    Int16& operator+=(qint64 step);
    Int16& operator-=(qint64 step);
    Int16& operator*=(qint64 factor);
    Int16& operator++() { return *this += 1; }
    Int16& operator--() { return *this -= 1; }
    Int16 operator++(int);
    Int16 operator--(int);

private:
    qint16 number = 0;
};

/// The sum of two counters; raises 6 outside 16 bits. (A plain + would be computed as `int`.)
Int16 Sum(Int16 left, Int16 right);
/// The product of two counters; raises 6 outside 16 bits.
Int16 Product(Int16 left, Int16 right);

} // namespace basic
