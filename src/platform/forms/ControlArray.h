#pragma once

#include "platform/basic/RuntimeError.h"

#include <QString>
#include <array>
#include <memory>
#include <utility>

namespace forms {

/// Controls that share a name and differ by index. Each carries "Name(i)" as its objectName.
template <class Control, int Count>
class ControlArray {
public:
    explicit ControlArray(const char* name) : items(Make(name, std::make_index_sequence<Count>())) {}

    /// Raises 9 outside the array.
    Control& operator[](int index)
    {
        if (index < 0 || index >= Count)
            throw basic::Error(9);
        return *items[static_cast<std::size_t>(index)];
    }

    static constexpr int Size() { return Count; }

private:
    template <std::size_t... Index>
    static std::array<std::unique_ptr<Control>, Count> Make(const char* name, std::index_sequence<Index...>)
    {
        return {std::make_unique<Control>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(Index))...};
    }

    std::array<std::unique_ptr<Control>, Count> items;
};

} // namespace forms
