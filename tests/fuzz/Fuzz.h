#pragma once

#include <QString>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Runs one input; ends the process if the program violates an invariant.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace fuzz {

/// Ends the process with the message `rule` unless `holds`.
inline void Require(bool holds, const char* rule, const QString& detail = {})
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken: %s\n%s\n", rule, qPrintable(detail));
    std::abort();
}

} // namespace fuzz
