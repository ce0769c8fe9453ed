#pragma once

#include <functional>
#include <optional>
#include <type_traits>

#include <sys/types.h>

namespace tests {

/// The channel by which a child process reports its progress. Reports survive the kill of the process.
class Reports {
public:
    explicit Reports(int writingEnd) : pipe(writingEnd) {}

    template <class Report>
    void Tell(const Report& report)
    {
        static_assert(std::is_trivially_copyable_v<Report>);
        Write(&report, sizeof report);
    }

private:
    void Write(const void* bytes, std::size_t size);
    int pipe;
};

/// A piece of work in a process of its own, which can be killed at any moment.
///
/// It starts as a copy of this process, so no database and no screen may be open here. It fails the test when it ends
/// by itself with a failed expectation, an exception or a crash.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<void(Reports&)>& work);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The next report, waited for; none once the process is gone and all reports were read.
    template <class Report>
    std::optional<Report> Next()
    {
        Report report;
        return Read(&report, sizeof report) ? std::optional(report) : std::nullopt;
    }

    /// Kills it as a power cut would: it gets no chance to tidy up. False when it had ended by itself before.
    bool Kill();
    /// Waits until it has done its work.
    void Wait();

private:
    bool Read(void* bytes, std::size_t size);
    /// Takes note of its end; true when it was killed.
    bool Reap();

    pid_t process = 0;
    int pipe = -1;
};

} // namespace tests
