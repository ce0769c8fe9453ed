#include "platform/forms/Desk.h"

#include <QtGlobal>

namespace forms {

namespace {
Desk* desk = nullptr;
}

std::unique_ptr<WaitNotice> Desk::Wait(const QString&)
{
    struct Silent : WaitNotice {
        void Advance(int, int) override {}
    };
    return std::make_unique<Silent>();
}

Desk& TheDesk()
{
    if (!desk)
        qFatal("No desk has been set: a screen reached the user before the program started.");
    return *desk;
}

void SetDesk(Desk* newDesk)
{
    desk = newDesk;
}

Answer MsgBox(const QString& text, Icon icon, const QString& title, Buttons buttons)
{
    return TheDesk().Message(text, icon, title, buttons);
}

} // namespace forms
