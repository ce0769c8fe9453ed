#pragma once

#include <QElapsedTimer>
#include <chrono>
#include <memory>

namespace report {

class GiveUpWindow;

/// Lets the user give up a reading that takes long: after `untilOffered` a window says so and offers to. Its events are
/// handled while IsGivenUp is called, in the program's one thread; no other window takes input meanwhile.
class LongReading {
public:
    explicit LongReading(std::chrono::milliseconds untilOffered);
    ~LongReading();

    /// To be called often. True once the user has pressed Esc or "Abandonner" or has closed the window.
    bool IsGivenUp();

private:
    void ShowWindow();

    std::chrono::milliseconds patience;
    QElapsedTimer sinceStart;
    QElapsedTimer sinceEvents;
    std::unique_ptr<GiveUpWindow> window; ///< none until patience has run out
};

} // namespace report
