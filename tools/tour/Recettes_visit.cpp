#include "Recettes_visit.h"

#include "TourDesk.h"

#include "cash/Recettes.h"
#include "core/Form1.h"
#include "platform/report/PreviewWindow.h"

#include <QTest>

using cash::Recettes;
using core::PeriodChooser;

namespace tour {

namespace {

void ReadTheMonth(TourDesk& desk, Recettes& journal)
{
    desk.TakePicture(journal, "Recettes-jour");
    journal.Dates.SSTab2.setCurrentIndex(PeriodChooser::PeriodPage);
    QTest::keyClicks(&journal.Dates.Text1[PeriodChooser::First],
                     "01" + journal.Dates.Text1[PeriodChooser::Last].text().mid(2).remove('/'));
    desk.TakePicture(journal, "Recettes-periode");
    QTest::keyClick(&journal.Dates.Text1[PeriodChooser::Last], Qt::Key_Return);
    TourDesk::Require(!journal.ActsTotal.text().isEmpty(), "aucun acte ce mois");
    const char* const pages[] = {"Recap-1", "Recap-2", "Detail"};
    for (int page = 0; page < journal.SSTab1.count(); ++page) {
        journal.SSTab1.setCurrentIndex(page);
        desk.TakePicture(journal, QStringLiteral("Recettes-") + pages[page]);
    }
}

void Print(TourDesk& desk, forms::Picture& button, const QString& name)
{
    desk.Visit([&desk, name](forms::Form& form) {
        desk.TakePicture(form, "Preview-" + name);
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    button.click();
}

void PrintEach(TourDesk& desk, Recettes& journal)
{
    journal.SSTab1.setCurrentIndex(Recettes::CodesTab);
    Print(desk, journal.Image3[Recettes::PrintCodes], "ZEP_RCP2");
    journal.SSTab1.setCurrentIndex(Recettes::RecapTab);
    Print(desk, journal.Image3[Recettes::PrintRecap], "ZEP_RCAP");
    for (const int scope : {Recettes::CurrentUnit, Recettes::AllUnits}) {
        journal.Image3[Recettes::PrintDetail].click();
        journal.SSOption1[scope].click();
        desk.TakePicture(journal, "Recettes-Imprimer");
        Print(desk, journal.Image4[Recettes::Accept], "ZEP_DTAL");
    }
}

} // namespace

void VisitJournal(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& journal = dynamic_cast<Recettes&>(form);
        ReadTheMonth(desk, journal);
        PrintEach(desk, journal);
        journal.Image1[Recettes::Quit].click();
    });
    main.Entry("mnu_recette")->trigger();
}

} // namespace tour
