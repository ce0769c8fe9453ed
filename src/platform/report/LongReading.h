#pragma once

#include <QElapsedTimer>
#include <chrono>
#include <memory>

namespace report {

class GiveUpWindow;

/// Lets the user cancel a long read: after `untilOffered` a window offers to. Events are processed inside IsGivenUp, in
/// the single thread; no other window accepts input meanwhile.
class LongReading {
public:
    explicit LongReading(std::chrono::milliseconds untilOffered);
    ~LongReading();

    /// Call often. True once the user has pressed Esc or "Abandonner" or closed the window.
    bool IsGivenUp();

private:
    void ShowWindow();

    std::chrono::milliseconds patience;
    QElapsedTimer sinceStart;
    QElapsedTimer sinceEvents;
    std::unique_ptr<GiveUpWindow> window; ///< null until it is shown
};

} // namespace report
