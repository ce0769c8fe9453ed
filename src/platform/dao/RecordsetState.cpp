#include "platform/dao/RecordsetState.h"

#include "platform/basic/RuntimeError.h"

namespace dao {

void RecordsetState::RaiseClosed()
{
    throw basic::RuntimeError(basic::Error::ObjectClosed);
}

void RecordsetState::Write(int, const Value&)
{
    throw basic::RuntimeError(basic::Error::NoPendingEdit);
}

void RecordsetState::AddNew()
{
    throw basic::RuntimeError(basic::Error::ReadOnly);
}

void RecordsetState::Edit()
{
    throw basic::RuntimeError(basic::Error::ReadOnly);
}

void RecordsetState::Update()
{
    throw basic::RuntimeError(basic::Error::NoPendingEdit);
}

void RecordsetState::CancelUpdate()
{
    throw basic::RuntimeError(basic::Error::NoPendingEdit);
}

void RecordsetState::Delete()
{
    throw basic::RuntimeError(basic::Error::ReadOnly);
}

void RecordsetState::LockEdits(bool) {}

Key RecordsetState::LastKey() const
{
    throw basic::RuntimeError(basic::Error::NoCurrentRecord);
}

} // namespace dao
