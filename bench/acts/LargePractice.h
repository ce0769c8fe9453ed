#pragma once

#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <sqlite3.h>

namespace bench {

inline constexpr int Services = 12;
inline constexpr int ActsOfYearDay = 260;             ///< 8 services with 22 acts, 4 with 21
inline constexpr int KeptOfYearDay = 92;              ///< of these, with one act in three
inline constexpr int YearDays = 250;                  ///< from 01/01/2007 on
inline constexpr const char* SheetDay = "17/06/2008"; ///< 250 acts
inline constexpr const char* FullDay = "18/06/2008";  ///< 5000 acts

/// Plain access to a database file, with the durability that the program keeps.
class Plain {
public:
    explicit Plain(const QString& file);
    ~Plain();
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    sqlite3_stmt* Prepare(const char* statement);
    void Run(const char* statement);
    static void RunOnce(sqlite3_stmt* statement);

private:
    sqlite3* database = nullptr;
};

/// A practice with that many acts in a folder of its own, open as the program opens it.
class LargePractice {
public:
    explicit LargePractice(int acts);
    ~LargePractice();

    /// A copy of the database as it was filled, for the plain statements.
    QString PlainFile() const;

private:
    static void Fill(Plain& database, int acts);

    QTemporaryDir folder;
};

/// Milliseconds on the clock, and those of the processor, which tell more on a machine that has other work.
struct Time {
    double clock = 0;
    double processor = 0;
};

/// The median times of a few runs.
Time MedianTime(int runs, const std::function<void()>& work);

} // namespace bench
