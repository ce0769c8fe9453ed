#include "platform/host/EndSignals.h"

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

constexpr std::array Signals{SIGTERM, SIGHUP, SIGINT};

int signalPipe[2] = {-1, -1};

/// Signal handler: only writes to the pipe. A second signal gets the default handling.
extern "C" void NoteSignal(int signal)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
    std::signal(signal, SIG_DFL);
}

} // namespace

EndSignals::EndSignals(std::function<void()> handler)
{
    if (::pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* const watch = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, this);
    notifier = watch;
    connect(watch, &QSocketNotifier::activated, this, [watch, handler = std::move(handler)] {
        watch->setEnabled(false);
        handler();
    });
    for (const int signal : Signals)
        std::signal(signal, NoteSignal);
}

EndSignals::~EndSignals()
{
    for (const int signal : Signals)
        std::signal(signal, SIG_DFL);
    delete notifier;
    for (int& end : signalPipe) {
        ::close(end);
        end = -1;
    }
}

} // namespace host
