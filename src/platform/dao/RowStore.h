#pragma once

#include "platform/dao/Store.h"

#include <QtGlobal>
#include <vector>

namespace dao {

/// Cached rows: 16 bytes per value, and a buffer with all texts. The memory is recycled, because filling a screen opens
/// and closes hundreds of record sets.
class RowStore {
public:
    RowStore();
    ~RowStore();
    Q_DISABLE_COPY_MOVE(RowStore)

    /// Appends `columns` columns of the statement's current row, starting at column `first`.
    void Append(const Statement& statement, int first, int columns);
    void Clear();
    std::size_t Count() const { return count; }
    /// A text is valid until the next Append or Clear.
    StoredValue At(std::size_t row, int column) const;

private:
    struct Memory {
        std::vector<StoredValue> values; // a text value holds its offset in `texts`
        std::vector<char> texts;
    };
    static std::vector<Memory>& Spare();

    Memory memory;
    std::size_t width = 0;
    std::size_t count = 0;
};

} // namespace dao
