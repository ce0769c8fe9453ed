#pragma once

#include <QTextStream>

namespace practice {

/// Exit codes.
inline constexpr int Done = 0;
inline constexpr int Refused = 1; ///< also if the check or the comparison finds something
inline constexpr int Misused = 2; ///< invalid arguments, or unreadable input

/// The streams of a command.
struct Streams {
    QTextStream& input;
    QTextStream& output;
    QTextStream& errors;
};

} // namespace practice
