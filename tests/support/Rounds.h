#pragma once

#include <QByteArray>

namespace tests {

/// Whether to run the long form of the fault tests: ZEP_FAULTS=long in the environment.
inline bool IsLongForm()
{
    return qgetenv("ZEP_FAULTS") == "long";
}

/// The number of rounds of a test that repeats itself: ten times as many in the long form.
inline int Rounds(int inShortForm)
{
    return IsLongForm() ? inShortForm * 10 : inShortForm;
}

} // namespace tests
