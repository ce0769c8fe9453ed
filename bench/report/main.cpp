// A report from the click to its visible page, and to a whole PDF: a day's list, and a detail of as many rows as a list
// can hold. Prints what each took beside its bound; ends with 1 when a bound is passed.

#include "data/Practice.h"
#include "platform/dao/Engine.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Style.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/Report.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>

namespace {

constexpr int DayRows = 40;
constexpr int DetailRows = 16352;
constexpr int Patients = 4000;
constexpr int Runs = 5;

double ResidentMegabytes()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

/// Shows a preview until its first page is painted, and closes it.
class MeasuringDesk : public forms::Desk {
public:
    forms::Answer Message(const QString& text, forms::Icon, const QString&, forms::Buttons) override
    {
        std::fprintf(stderr, "bench: %s\n", qPrintable(text));
        std::exit(2);
    }
    void ShowModal(forms::Form& form) override
    {
        auto& preview = dynamic_cast<report::PreviewWindow&>(form);
        preview.Load();
        preview.show();
        QApplication::processEvents();
        preview.grab(); // a platform without a screen paints no sooner
        visible = double(sinceClick.nsecsElapsed()) / 1e6;
        pages = preview.Pages().PageCount();
        if (!pdfPath.isEmpty()) {
            QElapsedTimer saving;
            saving.start();
            preview.SavePdf(pdfPath);
            pdf = double(saving.nsecsElapsed()) / 1e6;
        }
        megabytes = ResidentMegabytes();
        preview.Unload();
    }
    void Beep() override {}
    [[noreturn]] void EndProgram(int code) override { std::exit(code); }

    QElapsedTimer sinceClick;
    QString pdfPath;
    double visible = 0;
    double pdf = 0;
    double megabytes = 0;
    int pages = 0;
};

void Fill(dao::Database& database)
{
    dao::Transaction all(database);
    dao::Recordset patients = database.OpenRecordset("Patients");
    for (int patient = 0; patient < Patients; ++patient) {
        patients.AddNew();
        patients["nom"] = QString("BENALI-MARTIN %1").arg(patient);
        patients["Prenom"] = "Jean-Frédéric";
        patients.Update();
    }
    dao::Recordset services = database.OpenRecordset("Presta");
    for (int service = 0; service < 12; ++service) {
        services.AddNew();
        services["denom"] = QString("Échographie %1").arg(service);
        services.Update();
    }
    dao::Recordset acts = database.OpenRecordset("Actes");
    for (int act = 0; act < DetailRows; ++act) {
        acts.AddNew();
        acts["Date"] = "17/06/2008";
        acts["date_Presta"] = "16/06/2008";
        acts["Heure"] = "08:30";
        acts["HH"] = act % 10;
        acts["num_patient"] = act * 7 % Patients + 1;
        acts["num_presta"] = act % 12 + 1;
        acts["montant"] = 150.5 * (act % 40);
        acts["Type"] = "K10";
        acts["flag_R"] = act % 6;
        acts.Update();
    }
    all.Commit();
}

void FillProv(dao::Database& database, int rows)
{
    dao::Transaction all(database);
    database.Execute("Delete * from Prov");
    dao::Recordset lines = database.OpenRecordset("Prov");
    for (int row = 0; row < rows; ++row) {
        lines.AddNew();
        lines["num"] = row + 1;
        lines["Mt"] = 1200.0;
        lines.Update();
    }
    all.Commit();
}

bool Tell(const char* what, double measured, double bound, const char* unit)
{
    std::printf("%-52s %8.1f %s  (bound %.0f)%s\n", what, measured, unit, bound,
                measured < bound ? "" : "  PAST ITS BOUND");
    return measured < bound;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    forms::ApplyStyle(application);
    const QTemporaryDir folder;
    data::CreatePractice(folder.path(), {.accessCode = 6, .letterhead = {"Cabinet"}});
    dao::Engine engine;
    engine.SystemDB = folder.filePath(data::workgroupFile);
    const dao::Workspace workspace = engine.CreateWorkspace("", data::workspaceUser, data::BuildWorkspacePassword());
    dao::Database database = workspace.OpenDatabase(folder.filePath(data::databaseFile));
    Fill(database);

    MeasuringDesk desk;
    forms::SetDesk(&desk);
    report::Report Report1;
    Report1.DataFiles(0) = folder.filePath(data::databaseFile);
    const auto visibleAfter = [&](const char* file) {
        Report1.ReportFileName = QStringLiteral(ZEP_REPORTS "/") + file;
        std::vector<double> times;
        for (int run = 0; run < Runs; ++run) {
            desk.sinceClick.start();
            Report1.PrintReport();
            times.push_back(desk.visible);
        }
        std::ranges::sort(times);
        return times[Runs / 2];
    };

    FillProv(database, DayRows);
    bool kept = Tell("a day's list, click to visible page", visibleAfter("ZEP_R2.RPT"), 100, "ms");
    FillProv(database, DetailRows);
    const double idle = ResidentMegabytes();
    kept &= Tell("detail of 16,352 rows, click to visible page", visibleAfter("ZEP_DTAL.RPT"), 500, "ms");
    desk.pdfPath = folder.filePath("detail.pdf");
    desk.sinceClick.start();
    Report1.PrintReport();
    kept &= Tell("detail of 16,352 rows, whole PDF", desk.pdf, 2500, "ms");
    kept &= Tell("memory above idle, with the PDF written", desk.megabytes - idle, 100, "MB");
    std::printf("%d pages, PDF of %.1f MB\n", desk.pages, double(QFileInfo(desk.pdfPath).size()) / 1e6);
    return kept ? 0 : 1;
}
