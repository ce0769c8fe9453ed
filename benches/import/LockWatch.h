#pragma once

#include <QString>

#include <atomic>
#include <thread>

namespace bench {

/// Another program that asks for the write lock of a database every millisecond and gives it back at once.
class LockWatch {
public:
    explicit LockWatch(const QString& database);
    ~LockWatch();
    LockWatch(const LockWatch&) = delete;
    LockWatch& operator=(const LockWatch&) = delete;

    /// Ends the watch; returns the longest time for which the lock was refused, in milliseconds.
    double Longest();

private:
    void Watch(const QString& path);
    std::atomic<bool> isOver = false;
    double longest = 0;
    std::thread thread;
};

} // namespace bench
