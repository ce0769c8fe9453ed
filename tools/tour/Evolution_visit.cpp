#include "Evolution_visit.h"

#include "analysis/Result.h"
#include "evolution/Evolution.h"
#include "platform/report/PreviewWindow.h"

#include <QTest>
#include <QTextStream>

using analysis::Result;
using evolution::Evolution;

namespace tour {

namespace {

void PrintChart(TourDesk& desk, Evolution& screen, const QString& name, const QString& pictures)
{
    const QString pdf = pictures + "/" + name + ".pdf";
    desk.Visit([&desk, name, pdf](forms::Form& form) {
        auto& preview = dynamic_cast<report::PreviewWindow&>(form);
        desk.TakePicture(preview, "Preview-" + name);
        TourDesk::Require(preview.SavePdf(pdf), "PDF non enregistré");
        preview.Unload();
    });
    screen.Image1[Evolution::Print].click();
    QTextStream(stdout) << "Évolution : " << pdf << Qt::endl;
}

void LookAtMonths(TourDesk& desk, Evolution& screen, const QString& pictures)
{
    desk.TakePicture(screen, "Evolution");
    screen.Option1[Evolution::TwoYears].click();
    desk.TakePicture(screen, "Evolution-24-mois");
    desk.Visit([&desk](forms::Form& form) {
        auto& result = dynamic_cast<Result&>(form);
        desk.TakePicture(result, "Evolution-resultat");
        result.Image1[Result::Quit].click();
    });
    QTest::keyClick(&screen.Chart1, Qt::Key_Return);
    PrintChart(desk, screen, "Evolution-mois", pictures);
}

void LookAtServices(TourDesk& desk, Evolution& screen, const QString& pictures)
{
    screen.SSTab1.setCurrentIndex(Evolution::ServicesPage);
    screen.Chart2.setFocus();
    desk.TakePicture(screen, "Evolution-unites");
    PrintChart(desk, screen, "Evolution-par-unite", pictures);
    QTest::mouseClick(&screen.Chart2, Qt::LeftButton, {}, screen.Chart2.AreaOf(0).center().toPoint());
    TourDesk::Require(screen.Grid3.isVisible(), "les mois de l'unité ne s'affichent pas");
    desk.TakePicture(screen, "Evolution-unite");
    QTest::keyClick(&screen.Chart2, Qt::Key_Escape);
    TourDesk::Require(screen.Grid2.isVisible(), "Échap ne revient pas à toutes les unités");
}

} // namespace

void VisitEvolution(TourDesk& desk, const QString& pictures)
{
    desk.Visit([&desk, pictures](forms::Form& form) {
        auto& screen = dynamic_cast<Evolution&>(form);
        LookAtMonths(desk, screen, pictures);
        LookAtServices(desk, screen, pictures);
        screen.Image1[Evolution::Quit].click();
    });
}

void LookAtLosses(TourDesk& desk)
{
    desk.Visit([&desk](forms::Form& form) {
        desk.TakePicture(form, "Evolution-pertes");
        form.Unload();
    });
}

} // namespace tour
