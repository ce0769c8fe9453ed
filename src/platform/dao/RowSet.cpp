#include "platform/dao/RowSet.h"

namespace dao {

void RowSet::RequireOpen() const
{
    if (!IsOpen())
        Refuse(Error::ObjectClosed);
}

bool RowSet::IsNull(int column)
{
    RequireOpen();
    const Value* const pending = PendingValue(column);
    return pending != nullptr ? pending->IsNull() : Current(column).kind == StoredValue::Kind::Null;
}

Value RowSet::Get(int column)
{
    RequireOpen();
    const Value* const pending = PendingValue(column);
    const ColumnType type = columns[column].type;
    return pending != nullptr ? store::ValueOf(*pending, type) : store::ValueOf(Current(column), type);
}

SnapshotSet::SnapshotSet(std::shared_ptr<Connection> opened, std::shared_ptr<Plan> select,
                         const std::vector<Value>& literals)
    : RowSet(std::move(opened), select->columns), plan(std::move(select))
{
    Rows found = connection->Select(*plan, literals);
    while (found.Step())
        rows.Append(found.Row(), 0, columns.Count());
}

void SnapshotSet::GoTo(std::size_t row)
{
    if (rows.Count() == 0)
        Refuse(Error::NoCurrentRecord);
    position = row;
}

void SnapshotSet::MoveNext()
{
    if (IsEOF())
        Refuse(Error::NoCurrentRecord);
    GoTo(position + 1);
}

StoredValue SnapshotSet::Current(int column)
{
    if (IsEOF())
        Refuse(Error::NoCurrentRecord);
    return rows.At(position, column);
}

} // namespace dao
