#include "platform/host/EndSignals.h"
#include "platform/host/System_windows.h"

#include <QMetaObject>

#include <atomic>

namespace host {
namespace {

std::atomic<QObject*> receiver = nullptr; ///< of the first event; none after it
std::function<void()>* received = nullptr;

/// Runs in a thread of the system. The program is ended when it returns from a closing, or returns false.
BOOL WINAPI NoteEvent(DWORD event)
{
    QObject* const target = receiver.exchange(nullptr);
    if (target == nullptr)
        return FALSE;
    QMetaObject::invokeMethod(
        target, [] { (*received)(); }, Qt::QueuedConnection);
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        ::Sleep(INFINITE); // the program ends meanwhile
    return TRUE;
}

} // namespace

EndSignals::EndSignals(std::function<void()> handler)
{
    static std::function<void()> kept;
    kept = std::move(handler);
    received = &kept;
    notifier = new QObject(this);
    receiver = notifier;
    ::SetConsoleCtrlHandler(NoteEvent, TRUE);
}

EndSignals::~EndSignals()
{
    receiver = nullptr;
    ::SetConsoleCtrlHandler(NoteEvent, FALSE);
    delete notifier;
}

} // namespace host
