#include "platform/forms/Desk.h"

#include <QtGlobal>

namespace forms {

namespace {
Desk* desk = nullptr;
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
