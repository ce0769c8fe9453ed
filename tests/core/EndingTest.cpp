#include "core/Form1.h"
#include "core/Q_Date_2.h"
#include "core/calendar.h"
#include "core/globals.h"
#include "platform/forms/Guard.h"
#include "platform/forms/QtDesk.h"
#include "platform/host/EndSignals.h"
#include "support/ChildProcess.h"
#include "support/Globals.h"
#include "support/MainWindow.h"
#include "support/Practice.h"

#include <QApplication>
#include <QFile>
#include <QTimer>
#include <csignal>
#include <gtest/gtest.h>

namespace {

/// Runs the program like main, with an open practice, until it ends.
void RunProgram(tests::Practice& practice, const std::function<void(core::Form1&)>& whenOpened)
{
    forms::QtDesk desk;
    forms::SetDesk(&desk);
    core::Form1 main({});
    main.Load();
    main.show();
    const host::EndSignals endSignals([&] { main.EndForSystem(); });
    practice.Open();
    main.Label1[0].show(); // a practice is open
    QTimer::singleShot(0, &main, [&] { forms::Guarded([&] { whenOpened(main); }); });
    QApplication::exec();
}

} // namespace

TEST(Ending, ClosesScreensArchivesAndEndsOnEverySignal)
{
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        tests::Practice practice;
        practice.Act({.montant = 12});
        tests::ResetGlobals();
        tests::ChildProcess program([&](tests::Reports& reports) {
            RunProgram(practice, [&](core::Form1&) {
                // Sends the signal with a screen and a message box open.
                QTimer::singleShot(0, qApp, [&] {
                    QTimer::singleShot(0, qApp, [&] { reports.Send(1); });
                    forms::MsgBox("Une question ?", forms::Icon::Question, "ATTENTION", forms::Buttons::YesNo);
                });
                core::PickDateFromToday();
                EXPECT_EQ(core::PickedDay, -1); // left by its close box
            });
        });
        ASSERT_TRUE(program.Next<int>());
        program.Signal(signal);
        program.Wait();
        EXPECT_TRUE(QFile::exists(practice.File("ARCHIVES/ZEP_ONE.MDB"))) << signal;
    }
}
