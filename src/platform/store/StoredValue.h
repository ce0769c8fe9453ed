#pragma once

#include "platform/store/Value.h"

namespace store {

/// The declared type of a column; `Any` for expressions.
enum class ColumnType : quint8 { Any, Small, Whole, Real, Date, Text };

/// One value of a row. Its UTF-8 text is owned by the row's store or statement.
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

/// The value for the screens: dates as dd/mm/yyyy.
Value ValueOf(const StoredValue& stored, ColumnType type);
/// The same for a value returned by ToColumn.
Value ValueOf(const Value& stored, ColumnType type);

/// The value as stored in a column of this type. Raises 3421 when text isn't a number or a dd/mm/yyyy date, 6 when a
/// number doesn't fit.
Value ToColumn(const Value& value, ColumnType type);

} // namespace store
