#pragma once

#include "practice/check/Structure.h"

#include <limits>

namespace practice {

/// A table to be copied, and the columns under their names on both sides.
struct CopiedTable {
    QString from;
    QString to;
    QStringList fromFields;
    QStringList toFields;
    bool keepsRowId = false; ///< for a table whose rows have an order but no key
};

/// Copies the rows of a damaged table that can be read, without its indexes, past unreadable pages from both sides.
class TableCopy {
public:
    TableCopy(const Select& from, const Select& to, const CopiedTable& table);

    qint64 Copied() const { return copied; }
    bool IsWhole() const { return lowestLost > highestLost; }
    /// Between which keys there are unreadable rows, in French; empty if there are none.
    QString Lost() const;

private:
    struct Range {
        qint64 lowest;
        qint64 highest;
    };
    Range CopyFromEnds(Range range);
    bool CopyRows(store::Statement& rows, const Range& range, qint64& last);
    void NoteLost(const Range& range);

    static constexpr qint64 LowestKey = std::numeric_limits<qint64>::min();
    static constexpr qint64 HighestKey = std::numeric_limits<qint64>::max();
    store::Statement ascending;
    store::Statement descending;
    store::Statement addition;
    QString table;
    int columns;
    qint64 copied = 0;
    qint64 lowestLost = HighestKey;
    qint64 highestLost = LowestKey;
};

} // namespace practice
