#pragma once

#include "platform/dao/StoredValue.h"

#include <QtGlobal>
#include <vector>

namespace dao {

class Statement;

/// Rows that were read, 16 bytes a value and their texts one behind the other. Its memory goes to the next store:
/// record sets come and go by the hundred while a screen is filled.
class RowStore {
public:
    RowStore();
    ~RowStore();
    Q_DISABLE_COPY_MOVE(RowStore)

    /// Takes `columns` columns of the statement's current row, from column `first` on.
    void Append(const Statement& statement, int first, int columns);
    void Clear();
    std::size_t Count() const { return count; }
    /// A text is valid until the next Append or Clear.
    StoredValue At(std::size_t row, int column) const;

private:
    struct Memory {
        std::vector<StoredValue> values; // in place of its text a value has where in `texts` that begins
        std::vector<char> texts;
    };
    static std::vector<Memory>& Spare();

    Memory memory;
    std::size_t width = 0;
    std::size_t count = 0;
};

} // namespace dao
