// "Journal d'activité" on a large practice: a month, as many acts as the list can hold, a year with too many, and the
// printed detail, compared with plain prepared statements.
//
//     bench_journal LARGE     a data folder, left as it is

#include "JournalPractice.h"
#include "PlainJournal.h"

#include "cash/Recettes.h"
#include "core/globals.h"
#include "core/lists.h"
#include "platform/forms/Style.h"
#include "platform/report/PreviewWindow.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <vector>

using namespace bench;

namespace {

/// Shows a preview until its first page is painted, and closes it.
class PreviewingDesk : public QuietDesk {
public:
    forms::Answer Message(const QString&, forms::Icon, const QString&, forms::Buttons) override
    {
        ++messages;
        return forms::Answer::Ok;
    }
    void ShowModal(forms::Form& preview) override
    {
        preview.Load();
        preview.show();
        QApplication::processEvents();
        preview.grab(); // the offscreen platform paints only on demand
        visible = static_cast<double>(sinceClick.nsecsElapsed()) / 1e6;
        preview.Unload();
    }

    QElapsedTimer sinceClick;
    double visible = 0;
    int messages = 0;
};

void Show(cash::Recettes& screen, const Period& period)
{
    screen.Dates.Text1[core::PeriodChooser::First].setText(period.First());
    screen.Dates.Text1[core::PeriodChooser::Last].setText(period.Last());
    screen.Image2_Click(core::PeriodChooser::AcceptPeriod);
    QApplication::processEvents(); // until it is painted
}

void MeasureFills(Figures& figures, PlainJournal& plain, PreviewingDesk& desk)
{
    cash::Recettes screen;
    screen.Load();
    screen.show();
    screen.SSTab1.setCurrentIndex(cash::Recettes::DetailTab);
    QApplication::processEvents();
    const auto compare = [&](const char* path, const Period& period, Limits limits) {
        figures.Compare(
            path, {}, [&] { plain.Read(period); },
            [&] {
                desk.messages = 0;
                Show(screen, period);
            },
            limits);
        const int listed = screen.Grid2.Text(0, 0).isEmpty() ? 0 : screen.Grid2.Rows();
        Require(listed == plain.ListedActs() && screen.ActsTotal.text().toInt() == plain.Acts() &&
                    screen.TheoreticalTotal.text() == plain.TheoreticalTotal(),
                "the two journals differ");
        std::printf("    (%d acts, %d listed, %d services refused)\n", plain.Acts(), listed, desk.messages);
    };
    compare("a month of 5,000 acts, shown", JournalPractice::Month, {.ratio = 2.5, .milliseconds = 80});
    compare("16,352 acts, to the last cell", JournalPractice::Most, {.ratio = 2, .milliseconds = 150});
    compare("a year with too many acts of each service", JournalPractice::TooMany, {.milliseconds = 400});
}

void MeasureMemory(Figures& figures)
{
    const double before = ResidentMegabytes();
    cash::Recettes screen;
    screen.Load();
    screen.show();
    Show(screen, JournalPractice::Most);
    figures.Print("memory of the screen at its limit", ResidentMegabytes() - before, "MB", 40);
}

/// The printed detail, without and with its pages.
void MeasureDetail(Figures& figures, PlainJournal& plain, PreviewingDesk& desk)
{
    cash::Recettes screen;
    screen.Load();
    screen.show();
    Show(screen, JournalPractice::Most);
    screen.SSOption1[cash::Recettes::AllUnits].setChecked(true);
    std::vector<double> times;
    for (int run = 0; run < 7; ++run) {
        desk.sinceClick.start();
        screen.Image4_Click(cash::Recettes::Accept);
        times.push_back(desk.visible);
    }
    figures.Print("detail of 16,352 acts, click to visible page", Median(times), "ms", 400);

    plain.Read(JournalPractice::Most);
    const dao::KeyList keys(plain.ListedKeys().begin(), plain.ListedKeys().end());
    const dao::Recordset acts = core::TheDatabase.OpenRecordset("select * from Actes order by num");
    const core::TariffRates rates = core::ReadTariffs(core::OpenTariffs());
    figures.Compare(
        "16,352 acts valued, into Prov", {}, [&] { plain.FillProv(); },
        [&] {
            core::RefillScratchTable(
                "Prov", [&](core::ScratchRows& rows) { cash::AddRows(rows, cash::ValueActs(keys, acts, rates)); });
        },
        {.ratio = 2});
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_journal LARGE");
    forms::ApplyStyle(application);
    PreviewingDesk desk;
    const JournalPractice files(QString::fromLocal8Bit(argv[1]));
    const OpenPractice practice(files.Folder());
    PlainDatabase database(files.Database());
    PlainJournal plain(database);
    Figures figures;
    MeasureMemory(figures);
    MeasureFills(figures, plain, desk);
    MeasureDetail(figures, plain, desk);
    return figures.ExitCode();
}
