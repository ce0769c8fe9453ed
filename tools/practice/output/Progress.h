#pragma once

#include <QString>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace practice {

/// Shows how far a step of a command is, in one line of the terminal that renews itself: "Lecture : 12 000 lignes sur
/// 400 000". Shown from half a second after the command's first step on; nothing where the standard error isn't a
/// terminal. A thread of its own paints, since one statement of a database can take seconds.
class Progress {
public:
    /// `rows` is 0 if the step doesn't count any.
    explicit Progress(const QString& step, qint64 rows = 0);
    ~Progress(); ///< takes the line away
    Q_DISABLE_COPY_MOVE(Progress)

    void Advance(qint64 more = 1) { done.fetch_add(more, std::memory_order_relaxed); }

    /// Whether anything is shown: rows need not be counted otherwise.
    static bool IsShown();

private:
    void PaintUntilEnd();
    QString Line() const;

    QString step;
    qint64 rows;
    std::atomic<qint64> done = 0;
    bool isOver = false;
    std::mutex lock;
    std::condition_variable ended;
    std::thread painter;
};

} // namespace practice
