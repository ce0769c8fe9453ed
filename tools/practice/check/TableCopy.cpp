#include "practice/check/TableCopy.h"

#include "platform/basic/RuntimeError.h"
#include "practice/fields/QuotedName.h"

#include <algorithm>
#include <numeric>

namespace practice {
namespace {

QString Names(const QStringList& fields)
{
    QStringList quoted;
    for (const QString& field : fields)
        quoted << QuotedName(field);
    return quoted.join(", ");
}

store::Statement RowsOf(const Select& from, const CopiedTable& table, const char* order)
{
    QStringList fields{"rowid"};
    if (table.keepsRowId)
        fields << "rowid";
    if (!table.fromFields.isEmpty())
        fields << Names(table.fromFields);
    return from(QString("select %1 from %2 not indexed where rowid between ? and ? order by rowid %3")
                    .arg(fields.join(", "), QuotedName(table.from), order)
                    .toStdString());
}

store::Statement AdditionTo(const Select& to, const CopiedTable& table, int columns)
{
    QStringList fields;
    if (table.keepsRowId)
        fields << "rowid";
    fields << Names(table.toFields);
    return to(QString("insert into %1 (%2) values (%3)")
                  .arg(QuotedName(table.to), fields.join(", "), QStringList(columns, "?").join(", "))
                  .toStdString());
}

} // namespace

TableCopy::TableCopy(const Select& from, const Select& to, const CopiedTable& copiedTable)
    : ascending(RowsOf(from, copiedTable, "asc")), descending(RowsOf(from, copiedTable, "desc")),
      table(copiedTable.from), columns(static_cast<int>(copiedTable.toFields.size()) + (copiedTable.keepsRowId ? 1 : 0))
{
    addition = AdditionTo(to, copiedTable, columns);
    constexpr int mostRanges = 10000; // each range between unreadable pages is halved until it can be read
    std::vector<Range> ranges{{LowestKey, HighestKey}};
    for (int tried = 0; !ranges.empty(); ++tried) {
        const Range range = ranges.back();
        ranges.pop_back();
        const Range left = tried < mostRanges ? CopyFromEnds(range) : range;
        if (left.lowest > left.highest)
            continue;
        if (left.lowest == left.highest || tried >= mostRanges) {
            NoteLost(left);
            continue;
        }
        const qint64 middle = std::midpoint(left.lowest, left.highest);
        ranges.push_back({middle + 1, left.highest});
        ranges.push_back({left.lowest, middle});
    }
}

/// Copies the rows from the lowest and from the highest key on, up to the first that can't be read; returns the range
/// in between, whose lowest key is above the highest when all was read.
TableCopy::Range TableCopy::CopyFromEnds(Range range)
{
    constexpr Range none{1, 0};
    qint64 last = 0;
    const qint64 before = copied;
    if (CopyRows(ascending, range, last))
        return none;
    if (copied > before)
        range.lowest = last + 1;
    const qint64 below = copied;
    if (CopyRows(descending, range, last)) // which a page shows that only the other direction reads
        return none;
    if (copied > below)
        range.highest = last - 1;
    return range;
}

/// Copies rows up to the first that can't be read; `last` is the key of the last copied. True at the end of the range.
bool TableCopy::CopyRows(store::Statement& rows, const Range& range, qint64& last)
{
    const store::ResetAtEnd reset(rows);
    rows.Bind(1, range.lowest);
    rows.Bind(2, range.highest);
    try {
        while (rows.Step()) {
            for (int column = 1; column <= columns; ++column)
                addition.Bind(column, rows, column);
            addition.Run();
            last = rows.WholeAt(0);
            ++copied;
        }
        return true;
    } catch (const basic::RuntimeError& error) {
        if (error.Code() != basic::Error::DamagedDatabase)
            throw;
        return false;
    }
}

void TableCopy::NoteLost(const Range& range)
{
    lowestLost = std::min(lowestLost, range.lowest);
    highestLost = std::max(highestLost, range.highest);
}

QString TableCopy::Lost() const
{
    if (IsWhole())
        return {};
    QString where;
    if (lowestLost > LowestKey)
        where += QString(" à partir de num %1").arg(lowestLost);
    if (highestLost < HighestKey)
        where += QString(" jusqu'à num %1").arg(highestLost);
    return QString("%1 : des lignes%2 sont illisibles et manquent.").arg(table, where);
}

} // namespace practice
