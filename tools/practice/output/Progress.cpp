#include "practice/output/Progress.h"

#include "platform/host/Console.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>

namespace practice {
namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr Milliseconds QuietTime(500);
constexpr Milliseconds PaintPause(100);

/// How much of the quiet time is left since the first step of the command.
Milliseconds QuietTimeLeft()
{
    static const QElapsedTimer sinceFirstStep = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
    return std::max(QuietTime - Milliseconds(sinceFirstStep.elapsed()), Milliseconds(0));
}

QString Grouped(qint64 number)
{
    QString digits = QString::number(number);
    for (qsizetype place = digits.size() - 3; place > 0; place -= 3)
        digits.insert(place, ' ');
    return digits;
}

void Write(const QString& text)
{
    static const std::unique_ptr<QIODevice> errors = host::OpenStandard(host::Standard::Errors);
    errors->write(text.toUtf8());
}

} // namespace

bool Progress::IsShown()
{
    static const bool isTerminal = host::IsTerminal(host::Standard::Errors);
    return isTerminal;
}

Progress::Progress(const QString& stepName, qint64 rowCount) : step(stepName), rows(rowCount)
{
    if (IsShown())
        painter = std::thread([this] { PaintUntilEnd(); });
}

Progress::~Progress()
{
    if (!painter.joinable())
        return;
    {
        const std::lock_guard hold(lock);
        isOver = true;
    }
    ended.notify_one();
    painter.join();
}

void Progress::PaintUntilEnd()
{
    qsizetype width = 0;
    Milliseconds pause = QuietTimeLeft();
    std::unique_lock hold(lock);
    while (!ended.wait_for(hold, pause, [this] { return isOver; })) {
        const QString line = Line();
        width = std::max(width, line.size());
        Write("\r" + line.leftJustified(width));
        pause = PaintPause;
    }
    if (width > 0)
        Write("\r" + QString(width, ' ') + "\r");
}

QString Progress::Line() const
{
    if (rows == 0)
        return step + " ...";
    const qint64 sure = std::min(done.load(std::memory_order_relaxed), rows);
    return QString("%1 : %2 lignes sur %3").arg(step, Grouped(sure), Grouped(rows));
}

} // namespace practice
