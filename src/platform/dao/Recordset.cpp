#include "platform/dao/Recordset.h"

#include "platform/dao/Store.h"

namespace dao {

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

RecordsetState& Recordset::Open() const
{
    if (!IsOpen())
        throw RuntimeError(Error::ObjectClosed);
    return *state;
}

Field Recordset::operator[](const char* name) const
{
    const int column = Open().PositionOf(name);
    if (column < 0)
        throw RuntimeError(Error::UnknownField);
    return {state.get(), column};
}

Field Recordset::Collect(const QString& name) const
{
    return (*this)[name.toUtf8().constData()];
}

Field Recordset::Fields(int position) const
{
    if (position < 0 || position >= FieldCount())
        throw RuntimeError(Error::UnknownField);
    return {state.get(), position};
}

void Recordset::Close()
{
    if (state != nullptr)
        state->Close();
    state.reset();
}

} // namespace dao
