#pragma once

#include "platform/dao/Value.h"

namespace dao {

/// What a column holds by its declared type; `Any` is an expression without one.
enum class ColumnType : quint8 { Any, Small, Whole, Real, Date, Text };

/// One value of a row that was read. Its UTF-8 text belongs to whoever holds the row.
struct StoredValue {
    enum class Kind : quint8 { Null, Whole, Real, Text };

    union {
        qint64 whole = 0;
        double real;
        const char* text;
    };
    qint32 length = 0;
    Kind kind = Kind::Null;
};

/// The value as the screens read it: a date as dd/mm/yyyy.
Value ValueOf(const StoredValue& stored, ColumnType type);
/// The same for a value that ToColumn gave.
Value ValueOf(const Value& stored, ColumnType type);

/// The value as a column of this type stores it. Raises 3421 when text is no number or no dd/mm/yyyy date, 6 when a
/// number doesn't fit.
Value ToColumn(const Value& value, ColumnType type);

} // namespace dao
