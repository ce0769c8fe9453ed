#include "cash/CodeTally.h"

#include "platform/basic/RuntimeError.h"

namespace cash {

std::size_t CodeTally::IndexOf(int state, int code)
{
    if (state < 0 || state >= States || code < 0 || code >= Codes)
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    return static_cast<std::size_t>(state) * Codes + static_cast<std::size_t>(code);
}

void CodeTally::Add(int flag_R, int codeIndex)
{
    ++counts[IndexOf(flag_R + 1, codeIndex)];
}

void CodeTally::SumUp()
{
    for (int code = 0; code < AllCodes; ++code) {
        for (int state = FirstState; state <= LastState; ++state) {
            const basic::Int16 count = At(state, code);
            counts[IndexOf(AllStates, code)] += count;
            counts[IndexOf(state, AllCodes)] += count;
            counts[IndexOf(AllStates, AllCodes)] += count;
        }
    }
}

basic::Int16 CodeTally::At(int state, int code) const
{
    return counts[IndexOf(state, code)];
}

} // namespace cash
