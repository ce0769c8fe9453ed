#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace tests {

void Reports::Write(const void* bytes, std::size_t size)
{
    if (write(pipe, bytes, size) != static_cast<ssize_t>(size)) // writes this small are atomic on a pipe
        std::abort();
}

ChildProcess::ChildProcess(const std::function<void(Reports&)>& work)
{
    int ends[2];
    if (::pipe(ends) != 0)
        std::abort();
    std::fflush(nullptr);
    process = fork();
    if (process == 0) {
        close(ends[0]);
        [&]() noexcept { // noexcept: an exception must not continue into the parent's tests
            Reports reports(ends[1]);
            work(reports);
        }();
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
    }
    close(ends[1]);
    pipe = ends[0];
}

ChildProcess::~ChildProcess()
{
    Kill();
    close(pipe);
}

bool ChildProcess::Kill()
{
    if (process == 0)
        return false;
    kill(process, SIGKILL);
    return Reap();
}

void ChildProcess::Signal(int signal) const
{
    if (process != 0)
        kill(process, signal);
}

void ChildProcess::Wait()
{
    if (process != 0)
        Reap();
}

bool ChildProcess::Reap()
{
    int status = 0;
    const bool known = waitpid(process, &status, 0) == process;
    process = 0;
    const bool killed = known && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    const bool done = known && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
    EXPECT_TRUE(killed || done) << "the other process failed, status " << status;
    return killed;
}

bool ChildProcess::Read(void* bytes, std::size_t size)
{
    ssize_t got = 0;
    do
        got = read(pipe, bytes, size);
    while (got < 0 && errno == EINTR);
    return got == static_cast<ssize_t>(size);
}

} // namespace tests
