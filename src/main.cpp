#include "core/Form1.h"
#include "guide/Guide.h"
#include "menu.h"
#include "platform/basic/Version.h"
#include "platform/forms/Form.h"
#include "platform/forms/Guard.h"
#include "platform/forms/QtDesk.h"
#include "platform/forms/Style.h"
#include "platform/host/EndSignals.h"
#include "platform/paper/OwnFonts.h"

#include <QApplication>
#include <QEventLoop>
#include <QSessionManager>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("ZEP Lumo");
    QApplication::setApplicationVersion(basic::Version());
    QApplication::setDesktopFileName("zep-lumo");
    // Only the main window ends the program, even if a dialog is briefly the last visible window.
    QApplication::setQuitOnLastWindowClosed(false);
    paper::LoadOwnFonts(QApplication::applicationDirPath());
    forms::ApplyStyle(application);

    forms::QtDesk desk;
    forms::SetDesk(&desk);
    forms::OnHelp(guide::ShowGuide);

    core::Form1 mainWindow(MenuScreens());
    forms::Guarded([&] { mainWindow.Load(); });
    mainWindow.show();
    const host::EndSignals endSignals([&] { mainWindow.EndForSystem(); });
    // The desktop session doesn't end until this has returned.
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &mainWindow, [&](QSessionManager& session) {
        session.setRestartHint(QSessionManager::RestartNever);
        mainWindow.EndForSystem();
        QEventLoop().exec(); // the program ends inside
    });
    QApplication::exec(); // returns if the desktop quits the program without asking
    forms::Guarded([&] { mainWindow.EndNow(); });
    return 0;
}
