#include "platform/dao/RowStore.h"

namespace dao {
namespace {

constexpr std::size_t MostSpare = 8;
constexpr std::size_t LargestSpare = std::size_t{1} << 20; // bytes

} // namespace

std::vector<RowStore::Memory>& RowStore::Spare()
{
    static auto& spare = *new std::vector<Memory>; // never destroyed: a global record set may outlive it
    spare.reserve(MostSpare);                      // so that returning memory in a destructor never allocates
    return spare;
}

RowStore::RowStore()
{
    if (Spare().empty())
        return;
    memory = std::move(Spare().back());
    Spare().pop_back();
}

RowStore::~RowStore()
{
    Clear();
    const std::size_t size = memory.values.capacity() * sizeof(StoredValue) + memory.texts.capacity();
    if (size <= LargestSpare && Spare().size() < MostSpare)
        Spare().push_back(std::move(memory));
}

void RowStore::Append(const Statement& statement, int first, int columns)
{
    width = static_cast<std::size_t>(columns);
    memory.values.resize(++count * width);
    StoredValue* const row = &memory.values[(count - 1) * width];
    for (int column = 0; column < columns; ++column) {
        row[column] = statement.At(first + column);
        if (row[column].kind == StoredValue::Kind::Text) {
            const char* const text = row[column].text;
            row[column].whole = static_cast<qint64>(memory.texts.size());
            memory.texts.insert(memory.texts.end(), text, text + row[column].length);
        }
    }
}

void RowStore::Clear()
{
    memory.values.clear();
    memory.texts.clear();
    count = 0;
}

StoredValue RowStore::At(std::size_t row, int column) const
{
    StoredValue value = memory.values[row * width + static_cast<std::size_t>(column)];
    if (value.kind == StoredValue::Kind::Text)
        value.text = memory.texts.data() + value.whole;
    return value;
}

} // namespace dao
