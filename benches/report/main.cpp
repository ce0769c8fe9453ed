// A report from the click to its visible page, and to a PDF: a day's list, and a detail of as many rows as a list can
// hold.

#include "core/globals.h"
#include "data/Practice.h"
#include "data/ReportTemplates.h"
#include "platform/forms/Style.h"
#include "platform/pages/PageLayout.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/Report.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <vector>

using namespace bench;

namespace {

constexpr int DayRows = 40;
constexpr int DetailRows = 16352;
constexpr int Patients = 4000;
constexpr int Runs = 5;

/// Shows a preview until its first page is painted, and closes it.
class MeasuringDesk : public QuietDesk {
public:
    forms::Answer Message(const QString& text, forms::Icon, const QString&, forms::Buttons) override
    {
        Require(false, text);
        return forms::Answer::Ok;
    }
    void ShowModal(forms::Form& form) override
    {
        auto& preview = dynamic_cast<report::PreviewWindow&>(form);
        preview.Load();
        preview.show();
        QApplication::processEvents();
        preview.grab(); // the offscreen platform paints only on demand
        visible = static_cast<double>(sinceClick.nsecsElapsed()) / 1e6;
        pages = preview.Pages().PageCount();
        if (!pdfPath.isEmpty()) {
            QElapsedTimer saving;
            saving.start();
            preview.SavePdf(pdfPath);
            pdf = static_cast<double>(saving.nsecsElapsed()) / 1e6;
        }
        megabytes = ResidentMegabytes();
        preview.Unload();
    }

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

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    forms::ApplyStyle(application);
    const QTemporaryDir folder;
    data::CreatePractice(folder.path(), {.accessCode = 6, .letterhead = {"Cabinet"}});
    const OpenPractice practice(folder.path());
    Fill(core::TheDatabase);

    MeasuringDesk desk;
    Figures figures;
    report::Report Report1;
    Report1.DataFiles(0) = folder.filePath(data::DatabaseFile);
    Report1.TextSelect = data::ReportTextSelect;
    Report1.TextNames = data::ReportTextNames;
    const auto visibleAfter = [&](const char* file) {
        Report1.ReportFileName = QStringLiteral(ZEP_REPORTS "/") + file;
        std::vector<double> times;
        for (int run = 0; run < Runs; ++run) {
            desk.sinceClick.start();
            Report1.PrintReport();
            times.push_back(desk.visible);
        }
        return Median(times);
    };

    FillProv(core::TheDatabase, DayRows);
    figures.Print("a day's list, click to visible page", visibleAfter("ZEP_R2.RPT"), "ms", 100);
    FillProv(core::TheDatabase, DetailRows);
    const double idle = ResidentMegabytes();
    figures.Print("detail of 16,352 rows, click to visible page", visibleAfter("ZEP_DTAL.RPT"), "ms", 500);
    desk.pdfPath = folder.filePath("detail.pdf");
    std::vector<double> pdfs;
    for (int run = 0; run < Runs; ++run) {
        Report1.PrintReport();
        pdfs.push_back(desk.pdf);
    }
    figures.Print("detail of 16,352 rows, whole PDF", Median(pdfs), "ms", 2500);
    figures.Print("memory above idle, with PDFs written", desk.megabytes - idle, "MB", 100);
    std::printf("%d pages, PDF of %.1f MB\n", desk.pages, static_cast<double>(QFileInfo(desk.pdfPath).size()) / 1e6);
    return figures.ExitCode();
}
