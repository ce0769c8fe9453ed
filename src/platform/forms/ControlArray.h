#pragma once

#include "platform/basic/RuntimeError.h"

#include <QString>
#include <array>
#include <memory>
#include <utility>

namespace forms {

/// An array of controls with indexes from `First`. Their object names are "Name(i)".
template <class Control, int Count, int First = 0>
class ControlArray {
public:
    explicit ControlArray(const char* name) : items(Make(name, std::make_index_sequence<Count>())) {}

    /// Raises 9 outside the array.
    Control& operator[](int index)
    {
        if (index < First || index >= First + Count)
            throw basic::RuntimeError(basic::Error::IndexOutOfRange);
        return *items[static_cast<std::size_t>(index - First)];
    }

    static constexpr int Size() { return Count; }
    static constexpr int FirstIndex() { return First; }
    static constexpr int LastIndex() { return First + Count - 1; }

private:
    template <std::size_t... Index>
    static std::array<std::unique_ptr<Control>, Count> Make(const char* name, std::index_sequence<Index...>)
    {
        return {std::make_unique<Control>(
            QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(First + static_cast<int>(Index)))...};
    }

    std::array<std::unique_ptr<Control>, Count> items;
};

} // namespace forms
