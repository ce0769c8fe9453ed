#include "analysis_visit.h"

#include "Evolution_visit.h"

#include "analysis/Chrges.h"
#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "core/globals.h"
#include "platform/basic/Dates.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/report/PreviewWindow.h"

#include <QScopedValueRollback>
#include <QTest>
#include <QTextStream>

using analysis::Chrges;
using analysis::Mens_Act;
using analysis::Result;
using core::PeriodChooser;

namespace tour {

namespace {

void OpenEvolution(TourDesk& desk, core::Form1& main, const QString& pictures)
{
    desk.Visit([&desk, pictures](forms::Form& form) {
        auto& month = dynamic_cast<Mens_Act&>(form);
        VisitEvolution(desk, pictures);
        month.Image4.click();
        month.Image1.click();
    });
    main.Entry("mnu_mens")->trigger();
}

void LookAtMonths(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& month = dynamic_cast<Mens_Act&>(form);
        desk.TakePicture(month, "Mens_Act");
        month.Image3[Mens_Act::Previous].click();
        desk.TakePicture(month, "Mens_Act-precedent");
        month.Image3[Mens_Act::Next].click();
        month.Image2[Mens_Act::Unlock].click();
        desk.TakePicture(month, "Mens_Act-choix");
        month.Image2[Mens_Act::Apply].click();
        month.Image1.click();
    });
    main.Entry("mnu_mens")->trigger();
}

/// Enters charges, among them `rent` dinars; existing ones stay in the total.
void EnterCharges(TourDesk& desk, core::Form1& main, const char* rent)
{
    desk.Visit([&desk, rent](forms::Form& form) {
        auto& charges = dynamic_cast<Chrges&>(form);
        desk.TakePicture(charges, "Chrges");
        charges.Text1[Chrges::Rent].setFocus();
        QTest::keyClicks(&charges.Text1[Chrges::Rent], rent);
        desk.TakePicture(charges, "Chrges-saisie");
        desk.Answer("Sauvegarde en cours", "OK");
        charges.Image1[Chrges::Store].click();
    });
    main.Entry("mnu_Charges")->trigger();
}

/// Prints the result, unless the practice has no template for it.
void PrintResult(TourDesk& desk, Result& result, const QString& pdf)
{
    const QString name = "ZEP_Rstt.RPT";
    if (!host::FileExists(host::PathIn(core::DataFolder, name), 0)) {
        desk.Answer("Fichier " + name + " absent", "OK");
        return result.Image1[Result::Print].click();
    }
    desk.Visit([&desk, pdf](forms::Form& form) {
        auto& preview = dynamic_cast<report::PreviewWindow&>(form);
        desk.TakePicture(preview, "Preview-Resultat");
        TourDesk::Require(preview.SavePdf(pdf), "PDF non enregistré");
        preview.Unload();
    });
    result.Image1[Result::Print].click();
    QTextStream(stdout) << "Résultat : " << pdf << Qt::endl;
}

/// Shows and prints the result of the month up to today.
void ShowMonth(TourDesk& desk, core::Form1& main, const QString& name, const QString& pdf)
{
    desk.Visit([&desk, name, pdf](forms::Form& form) {
        auto& result = dynamic_cast<Result&>(form);
        desk.TakePicture(result, name + "-dates");
        result.Dates.SSTab2.setCurrentIndex(PeriodChooser::PeriodPage);
        const QDate today = host::Today();
        const QDate first(today.year(), today.month(), 1);
        result.Dates.Text1[PeriodChooser::First].setText(basic::DateText(first));
        desk.TakePicture(result, name + "-periode");
        QTest::keyClick(&result.Dates.Text1[PeriodChooser::Last], Qt::Key_Return);
        desk.TakePicture(result, name);
        result.Image1[Result::Print].setFocus(Qt::TabFocusReason);
        desk.TakePicture(result, name + "-bulle");
        PrintResult(desk, result, pdf);
        result.Image1[Result::OtherDate].click();
        result.Dates.SSTab2.setCurrentIndex(PeriodChooser::DayPage);
        QTest::keyClick(&result.Dates.Text1[PeriodChooser::Day], Qt::Key_Return);
        desk.TakePicture(result, name + "-jour");
        result.Image1[Result::Quit].click();
    });
    main.Entry("mnu_resultat")->trigger();
}

/// Shows the loss of today, with French texts.
void ShowLoss(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& result = dynamic_cast<Result&>(form);
        QTest::keyClick(&result.Dates.Text1[PeriodChooser::Day], Qt::Key_Return);
        desk.TakePicture(result, "Result-perte");
        LookAtLosses(desk);
        result.Image3.click();
        result.Image1[Result::Quit].click();
    });
    main.Entry("mnu_resultat")->trigger();
}

} // namespace

void VisitAnalysis(TourDesk& desk, core::Form1& main, const QString& pictures)
{
    LookAtMonths(desk, main);
    EnterCharges(desk, main, "52000");
    ShowMonth(desk, main, "Result", pictures + "/Resultat.pdf");
    OpenEvolution(desk, main, pictures);
    EnterCharges(desk, main, "9000000"); // from here on there is a loss
    ShowLoss(desk, main);
    const QScopedValueRollback<basic::Int16> language(core::LanguageMode, core::Arabic);
    ShowMonth(desk, main, "Result-arabe", pictures + "/Resultat-arabe.pdf");
}

} // namespace tour
