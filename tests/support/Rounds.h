#pragma once

#include <QByteArray>

namespace tests {

/// Whether the fault tests are to take their time: ZEP_FAULTS=long in the environment.
inline bool IsLongForm()
{
    return qgetenv("ZEP_FAULTS") == "long";
}

/// How many rounds to play where the short form plays that many.
inline int Rounds(int inShortForm)
{
    return IsLongForm() ? inShortForm * 10 : inShortForm;
}

} // namespace tests
