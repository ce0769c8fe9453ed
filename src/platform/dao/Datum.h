#pragma once

#include "platform/dao/Value.h"

#include <string>

namespace dao {

/// What a column holds by its declared type; `Any` is an expression without one.
enum class ColumnType : quint8 { Any, Small, Whole, Real, Date, Text };

enum class Kind : quint8 { Null, Whole, Real, Text };

/// One value on its way to the store: a literal of a statement, a field of a row being edited. Text is UTF-8.
struct Datum {
    Kind kind = Kind::Null;
    qint64 whole = 0;
    double real = 0;
    std::string text;

    static Datum Of(qint64 number);
    static Datum Of(double number);
    static Datum Of(std::string text);
};

/// One value of a row that was read, in 16 bytes; its text lies in the arena of the rows.
struct Cell {
    union {
        qint64 whole;
        double real;
        quint64 offset;
    };
    quint32 length = 0;
    Kind kind = Kind::Null;
};

/// A stored value seen from outside, wherever it lies.
struct Seen {
    Kind kind = Kind::Null;
    qint64 whole = 0;
    double real = 0;
    const char* text = nullptr;
    int length = 0;

    Seen() = default;
    Seen(const Cell& cell, const char* arena);
    explicit Seen(const Datum& datum);
};

/// Readers of a stored value. Each raises 94 on Null, 13 for text where a number is asked for, 6 when it doesn't fit.
/// A stored date reads as dd/mm/yyyy.
QString TextOf(const Seen& seen, ColumnType type);
double DoubleOf(const Seen& seen);
qint32 LongOf(const Seen& seen);
Value ValueOf(const Seen& seen, ColumnType type);

/// The value as a column of this type stores it. Raises 3421 when text is no number or no dd/mm/yyyy date, 6 when a
/// number doesn't fit.
Datum Stored(const Value& value, ColumnType type);

} // namespace dao
