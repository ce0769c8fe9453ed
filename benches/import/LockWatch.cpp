#include "import/LockWatch.h"

#include "support/Floor.h"

#include <algorithm>
#include <chrono>
#include <sqlite3.h>

namespace bench {

LockWatch::LockWatch(const QString& database) : thread([this, database] { Watch(database); }) {}

LockWatch::~LockWatch()
{
    Longest();
}

double LockWatch::Longest()
{
    isOver = true;
    if (thread.joinable())
        thread.join();
    return longest;
}

void LockWatch::Watch(const QString& path)
{
    using Clock = std::chrono::steady_clock;
    sqlite3* database = nullptr;
    Require(sqlite3_open(path.toUtf8().constData(), &database) == SQLITE_OK, "no database " + path);
    sqlite3_exec(database, "pragma cache_size=1", nullptr, nullptr, nullptr);
    Clock::time_point lastFree = Clock::now();
    while (!isOver) {
        const bool isFree = sqlite3_exec(database, "begin immediate; rollback", nullptr, nullptr, nullptr) == SQLITE_OK;
        const Clock::time_point now = Clock::now();
        longest = std::max(longest, std::chrono::duration<double, std::milli>(now - lastFree).count());
        if (isFree)
            lastFree = now;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    sqlite3_close(database);
}

} // namespace bench
