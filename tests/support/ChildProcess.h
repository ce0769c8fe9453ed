#pragma once

#include <functional>
#include <optional>
#include <type_traits>

#include <sys/types.h>

namespace tests {

/// The channel for a child process to report its progress. Reports survive killing the process.
class Reports {
public:
    explicit Reports(int writingEnd) : pipe(writingEnd) {}

    template <class Report>
    void Send(const Report& report)
    {
        static_assert(std::is_trivially_copyable_v<Report>);
        Write(&report, sizeof report);
    }

private:
    void Write(const void* bytes, std::size_t size);
    int pipe;
};

/// Work in a child process, which can be killed at any moment.
///
/// The process is forked, so no database or screen may be open. Fails the test when it ends with a failed expectation,
/// an exception or a crash.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<void(Reports&)>& work);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits for the next report; none once the process has ended and all reports were read.
    template <class Report>
    std::optional<Report> Next()
    {
        Report report;
        return Read(&report, sizeof report) ? std::optional(report) : std::nullopt;
    }

    /// Kills it, without a chance to clean up. False when it had already ended.
    bool Kill();
    /// Sends it a signal.
    void Signal(int signal) const;
    /// Waits until it has finished its work.
    void Wait();

private:
    bool Read(void* bytes, std::size_t size);
    /// Collects its exit status; true when it was killed.
    bool Reap();

    pid_t process = 0;
    int pipe = -1;
};

} // namespace tests
