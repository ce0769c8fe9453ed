#pragma once

#include <functional>
#include <limits>
#include <vector>

namespace bench {

/// What a path may take at most; a limit that isn't given isn't tested.
struct Limits {
    double ratio = std::numeric_limits<double>::infinity();        ///< to the floor
    double milliseconds = std::numeric_limits<double>::infinity(); ///< on the clock
};

/// How often a work is done: so many times measured, and so many repeats within one measure, for works too short to be
/// measured alone.
struct Rounds {
    int measured = 9;
    int repeats = 1;
};

/// Medians of one comparison, in milliseconds for one time the work.
struct Times {
    double floor = 0;
    double ours = 0;
};

/// The table of figures that a bench prints, and whether all of them are within their limits.
class Figures {
public:
    /// Does both works in turn, so that what else the machine does falls on both, and prints floor, ours and ratio.
    Times Compare(const char* path, Rounds rounds, const std::function<void()>& floor,
                  const std::function<void()>& ours, Limits limits);
    /// A figure that has no floor.
    void Tell(const char* path, double figure, const char* unit, double limit);
    /// 0, or 1 once a figure was past its limit.
    int ExitCode() const { return exitCode; }

private:
    void EndLine(bool kept);
    int exitCode = 0;
};

double Median(std::vector<double> figures);
/// The median of the times of a work, in milliseconds.
double MedianTime(int runs, const std::function<void()>& work);

/// What the process holds in memory now, and the most it has held, in megabytes.
double ResidentMegabytes();
double PeakMegabytes();

} // namespace bench
