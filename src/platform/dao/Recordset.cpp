#include "platform/dao/Recordset.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/RecordsetState.h"

namespace dao {

// -- fields

bool Field::IsNull() const
{
    return state->ValueAt(column).kind == Kind::Null;
}

QString Field::Text() const
{
    return TextOf(state->ValueAt(column), state->FieldColumns()[column].type);
}

double Field::Double() const
{
    return DoubleOf(state->ValueAt(column));
}

qint32 Field::Long() const
{
    return LongOf(state->ValueAt(column));
}

basic::Int16 Field::Integer() const
{
    return Long();
}

Key Field::Key() const
{
    return Long();
}

Value Field::Get() const
{
    return ValueOf(state->ValueAt(column), state->FieldColumns()[column].type);
}

Field& Field::operator=(const Value& value)
{
    state->Write(column, value);
    return *this;
}

Field& Field::operator=(const Field& other)
{
    if (this != &other)
        state->Write(column, other.Get());
    return *this;
}

// -- record sets

Recordset::Recordset() = default;
Recordset::Recordset(std::shared_ptr<RecordsetState> opened) : state(std::move(opened)) {}
Recordset::~Recordset() = default;
Recordset::Recordset(const Recordset&) = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(const Recordset&) = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

RecordsetState& Recordset::Open() const
{
    if (!IsOpen())
        throw basic::RuntimeError(basic::Error::ObjectClosed);
    return *state;
}

bool Recordset::IsOpen() const
{
    return state != nullptr && state->IsOpen();
}

void Recordset::MoveFirst()
{
    Open().MoveFirst();
}

void Recordset::MoveNext()
{
    Open().MoveNext();
}

void Recordset::MoveLast()
{
    Open().MoveLast();
}

bool Recordset::IsEOF() const
{
    return Open().IsEOF();
}

int Recordset::RecordCount() const
{
    return Open().RecordCount();
}

void Recordset::FindFirst(const QString& criteria)
{
    Open().FindFirst(criteria);
}

bool Recordset::NoMatch() const
{
    return Open().NoMatch();
}

Field Recordset::operator[](const char* name) const
{
    const int column = Open().FieldColumns().PositionOf(name);
    if (column < 0)
        throw basic::RuntimeError(basic::Error::UnknownField);
    return {state.get(), column};
}

Field Recordset::Collect(const QString& name) const
{
    return (*this)[name.toUtf8().constData()];
}

Field Recordset::Fields(int position) const
{
    if (position < 0 || position >= FieldCount())
        throw basic::RuntimeError(basic::Error::UnknownField);
    return {state.get(), position};
}

int Recordset::FieldCount() const
{
    return Open().FieldColumns().Count();
}

void Recordset::AddNew()
{
    Open().AddNew();
}

void Recordset::Edit()
{
    Open().Edit();
}

void Recordset::Update()
{
    Open().Update();
}

void Recordset::CancelUpdate()
{
    Open().CancelUpdate();
}

Key Recordset::LastKey() const
{
    return Open().LastKey();
}

void Recordset::Delete()
{
    Open().Delete();
}

void Recordset::LockEdits(bool pessimistic)
{
    Open().LockEdits(pessimistic);
}

void Recordset::Close()
{
    if (state != nullptr)
        state->Close();
    state.reset();
}

} // namespace dao
