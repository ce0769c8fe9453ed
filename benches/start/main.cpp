// The time from program start to a usable main window, and the memory used with the cash of a large practice's last day
// open. Each start is a separate process.
//
//     bench_start LARGE     a demo practice, left as it is

#include "cash/J_CAISSE.h"
#include "core/Auteur.h"
#include "core/Form1.h"
#include "core/Q_Date_2.h"
#include "core/globals.h"
#include "menu.h"
#include "platform/basic/Dates.h"
#include "platform/forms/Guard.h"
#include "platform/forms/QtDesk.h"
#include "platform/forms/Style.h"
#include "platform/host/Host.h"
#include "practice/demo/Demo.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"

#include <QApplication>
#include <QProcess>
#include <cstdio>

using namespace bench;

namespace {

constexpr int Starts = 11;

/// Plays a user who opens the practice, accepts the day offered by the picker and views its cash.
class UserAtTheTill : public forms::QtDesk {
public:
    explicit UserAtTheTill(const QString& dataFolder) : folder(dataFolder) {}

    void ShowModal(forms::Form& form) override
    {
        form.Load();
        form.show();
        QApplication::processEvents();
        if (auto* opening = dynamic_cast<core::Auteur*>(&form)) {
            opening->Dir1.SetPath(folder);
            opening->Text1.setText(QString::number(practice::DemoAccessCode));
            opening->Image2_Click(0);
        } else if (auto* picker = dynamic_cast<core::Q_Date_2*>(&form)) {
            picker->Image2[0].click();
        } else if (auto* cash = dynamic_cast<cash::J_CAISSE*>(&form)) {
            for (int tab = 0; tab < cash->SSTab1.count(); ++tab) {
                cash->SSTab1.setCurrentIndex(tab);
                cash->grab();
            }
            shownActs = cash->Grid2.Rows() + cash->Grid3.Rows();
        }
        form.Unload();
    }

    int shownActs = 0;

private:
    QString folder;
};

/// The measured process: starts like the program and reports when its window is usable.
int RunProgram(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    forms::ApplyStyle(application);
    forms::QtDesk desk;
    forms::SetDesk(&desk);
    core::Form1 mainWindow(MenuScreens());
    forms::Guarded([&] { mainWindow.Load(); });
    mainWindow.show();
    QApplication::processEvents();
    mainWindow.grab(); // the offscreen platform paints only on demand
    std::puts("window");
    std::fflush(stdout);
    if (argc < 3)
        return 0;

    UserAtTheTill user(QString::fromLocal8Bit(argv[2]));
    forms::SetDesk(&user);
    mainWindow.Entry("mnu_aprpos")->trigger();
    Require(core::TheDatabase.IsOpen(), "the practice doesn't open");
    host::FixToday(basic::DateValue(OpenPractice::LastDay()));
    mainWindow.Entry("mnu_Caisse")->trigger();
    Require(user.shownActs > 2, "the cash of the day shows no acts");
    std::printf("%.1f\n", PeakMegabytes());
    std::fflush(stdout);
    std::_Exit(0); // skip the archive copy
}

/// Starts the measured process and waits for its first line.
void Start(QProcess& program, const QStringList& arguments)
{
    program.start(QCoreApplication::applicationFilePath(), QStringList{"run"} + arguments);
    Require(program.waitForReadyRead(60000) && program.readLine().trimmed() == "window", "no main window");
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc >= 2 && qstrcmp(argv[1], "run") == 0)
        return RunProgram(argc, argv);

    const QCoreApplication application(argc, argv);
    Require(argc == 2, "usage: bench_start LARGE");
    Figures figures;
    const double start = MedianTime(Starts, [] {
        QProcess program;
        Start(program, {});
        program.waitForFinished();
    });
    figures.Print("start to a main window that can be used", start, "ms", 400);

    QProcess program;
    Start(program, {QString::fromLocal8Bit(argv[1])});
    Require(program.waitForFinished(60000) && program.exitCode() == 0, "the visit to the till failed");
    figures.Print("peak memory, practice open and till shown", program.readAll().trimmed().toDouble(), "MB", 120);
    return figures.ExitCode();
}
