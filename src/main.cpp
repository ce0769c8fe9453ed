#include "core/Form1.h"
#include "menu.h"
#include "platform/forms/Guard.h"
#include "platform/forms/QtDesk.h"
#include "platform/forms/Style.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("ZEP Lumo");
    // Only the main window ends the program, also when a dialog is the last visible window for a moment.
    QApplication::setQuitOnLastWindowClosed(false);
    forms::ApplyStyle(application);

    forms::QtDesk desk;
    forms::SetDesk(&desk);

    core::Form1 mainWindow(MenuScreens());
    forms::Guarded([&] { mainWindow.Load(); });
    mainWindow.show();
    return QApplication::exec();
}
