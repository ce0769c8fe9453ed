#pragma once

#include <QObject>
#include <functional>

namespace host {

/// Calls `handler` from the event loop, once, when the system asks the program to end: SIGTERM, SIGHUP or SIGINT, on
/// Windows Ctrl+C, Ctrl+Break or the closing of its console. A second one ends it at once. One object at a time; its
/// destructor restores the former handling.
class EndSignals : public QObject {
public:
    explicit EndSignals(std::function<void()> handler);
    ~EndSignals() override;
    Q_DISABLE_COPY_MOVE(EndSignals)

private:
    QObject* notifier = nullptr;
};

} // namespace host
