#pragma once

#include <QString>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Takes any bytes; ends the process when the program does with them what it must never do.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace fuzz {

/// Ends the process, telling which rule was broken, unless `holds`.
inline void Require(bool holds, const char* rule, const QString& detail = {})
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken: %s\n%s\n", rule, qPrintable(detail));
    std::abort();
}

} // namespace fuzz
