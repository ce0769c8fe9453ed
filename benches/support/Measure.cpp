#include "support/Measure.h"

#include <QFile>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace bench {

namespace {

double TimeOf(int repeats, const std::function<void()>& work)
{
    const auto started = std::chrono::steady_clock::now();
    for (int repeat = 0; repeat < repeats; ++repeat)
        work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count() / repeats;
}

/// A line of /proc/self/status ("VmHWM:     1234 kB"), in megabytes.
double MegabytesOf(const QByteArray& name)
{
    QFile account("/proc/self/status");
    if (!account.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : account.readAll().split('\n'))
        if (line.startsWith(name))
            return line.mid(name.size() + 1).simplified().split(' ').at(0).toDouble() / 1024;
    return 0;
}

} // namespace

Times Figures::Compare(const char* path, Rounds rounds, const std::function<void()>& floor,
                       const std::function<void()>& ours, Limits limits)
{
    std::vector<double> floorTimes, ourTimes;
    for (int round = 0; round < rounds.measured; ++round) {
        floorTimes.push_back(TimeOf(rounds.repeats, floor));
        ourTimes.push_back(TimeOf(rounds.repeats, ours));
    }
    const Times times{Median(floorTimes), Median(ourTimes)};
    const double ratio = times.ours / times.floor;
    std::printf("%-50s floor %9.4f ms  ours %9.4f ms  ratio %5.2f", path, times.floor, times.ours, ratio);
    if (std::isfinite(limits.ratio))
        std::printf("  at most %.1f", limits.ratio);
    if (std::isfinite(limits.milliseconds))
        std::printf("  under %.0f ms", limits.milliseconds);
    EndLine(ratio <= limits.ratio && times.ours < limits.milliseconds);
    return times;
}

void Figures::Print(const char* path, double figure, const char* unit, double limit)
{
    std::printf("%-50s %9.1f %s  under %.0f %s", path, figure, unit, limit, unit);
    EndLine(figure < limit);
}

void Figures::EndLine(bool kept)
{
    std::printf("%s\n", kept ? "" : "  PAST ITS LIMIT");
    std::fflush(stdout);
    if (!kept)
        exitCode = 1;
}

double Median(std::vector<double> figures)
{
    const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
    std::ranges::nth_element(figures, middle);
    return *middle;
}

double MedianTime(int runs, const std::function<void()>& work)
{
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(runs));
    for (int run = 0; run < runs; ++run)
        times.push_back(TimeOf(1, work));
    return Median(times);
}

double ResidentMegabytes()
{
    return MegabytesOf("VmRSS:");
}

double PeakMegabytes()
{
    return MegabytesOf("VmHWM:");
}

} // namespace bench
