#include "platform/dao/RecordsetState.h"

#include "platform/basic/RuntimeError.h"

namespace dao {

void RecordsetState::RaiseClosed()
{
    throw basic::Error(3420);
}

void RecordsetState::Write(int, const Value&)
{
    throw basic::Error(3020);
}

void RecordsetState::AddNew()
{
    throw basic::Error(3027);
}

void RecordsetState::Edit()
{
    throw basic::Error(3027);
}

void RecordsetState::Update()
{
    throw basic::Error(3020);
}

void RecordsetState::CancelUpdate()
{
    throw basic::Error(3020);
}

void RecordsetState::Delete()
{
    throw basic::Error(3027);
}

void RecordsetState::LockEdits(bool) {}

Key RecordsetState::LastKey() const
{
    throw basic::Error(3021);
}

} // namespace dao
