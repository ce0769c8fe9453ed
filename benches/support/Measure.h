#pragma once

#include <functional>
#include <limits>
#include <vector>

namespace bench {

/// The limits of a path; only those given are tested.
struct Limits {
    double ratio = std::numeric_limits<double>::infinity();        ///< to the floor
    double milliseconds = std::numeric_limits<double>::infinity(); ///< on the clock
};

/// The number of measurements, and of repeats within one measurement for work too short to measure alone.
struct Rounds {
    int measured = 9;
    int repeats = 1;
};

/// Medians of one comparison, in milliseconds per repeat.
struct Times {
    double floor = 0;
    double ours = 0;
};

/// Prints the figures of a bench, and records whether all of them are within their limits.
class Figures {
public:
    /// Runs both in turn, so that other load affects both, and prints floor, ours and ratio.
    Times Compare(const char* path, Rounds rounds, const std::function<void()>& floor,
                  const std::function<void()>& ours, Limits limits);
    /// A figure without a floor.
    void Print(const char* path, double figure, const char* unit, double limit);
    /// 0, or 1 if a figure exceeded its limit.
    int ExitCode() const { return exitCode; }

private:
    void EndLine(bool kept);
    int exitCode = 0;
};

double Median(std::vector<double> figures);
/// The median time of `work`, in milliseconds.
double MedianTime(int runs, const std::function<void()>& work);

/// The current and the peak memory of the process, in megabytes.
double ResidentMegabytes();
double PeakMegabytes();

} // namespace bench
