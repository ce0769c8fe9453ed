#include "F_Dep_visit.h"

#include "expenses/F_Dep.h"

#include <QTest>

using expenses::F_Dep;

namespace tour {

namespace {

void EnterExpense(TourDesk& desk, F_Dep& screen)
{
    const int rowsBefore = screen.Grid1.Text(0, F_Dep::Number).isEmpty() ? 0 : screen.Grid1.Rows();
    screen.Crecettes[F_Dep::New].click();
    screen.SSPanel3.Date.selectAll();
    QTest::keyClicks(&screen.SSPanel3.Date, screen.Dates.Text1[core::PeriodChooser::Day].text().remove('/'));
    QTest::keyClick(&screen.SSPanel3.Date, Qt::Key_Return);
    QTest::keyClicks(&screen.SSPanel3.Object, "Gants et compresses");
    QTest::keyClick(&screen.SSPanel3.Object, Qt::Key_Return);
    QTest::keyClicks(&screen.SSPanel3.Amount, "1250,50");
    desk.TakePicture(screen, "F_Dep-nouvelle");
    desk.Answer("Enregistrement terminé", "OK");
    QTest::keyClick(&screen.SSPanel3.Amount, Qt::Key_Return);
    TourDesk::Require(screen.Grid1.Rows() == rowsBefore + 1, "la dépense n'est pas dans la liste");
    desk.TakePicture(screen, "F_Dep-enregistree");
}

void ChangeExpense(TourDesk& desk, F_Dep& screen)
{
    screen.Grid1.SetRow(screen.Grid1.Rows() - 1);
    screen.Grid1_DblClick();
    screen.SSPanel3.Amount.setText("1350");
    desk.TakePicture(screen, "F_Dep-modification");
    desk.Answer("Enregistrement terminé", "OK");
    screen.SSPanel3.Image2[expenses::EntryPanel::Accept].click();
    desk.TakePicture(screen, "F_Dep-modifiee");
}

void DeleteExpense(TourDesk& desk, F_Dep& screen)
{
    const int rowsBefore = screen.Grid1.Rows();
    desk.Answer("Confirmer supression de ligne N° " + QString::number(rowsBefore), "Oui");
    screen.Crecettes[F_Dep::Remove].click();
    desk.TakePicture(screen, "F_Dep-supprimee");
}

void ChoosePeriod(TourDesk& desk, F_Dep& screen)
{
    screen.Crecettes[F_Dep::Select].click();
    desk.TakePicture(screen, "F_Dep-dates");
    screen.Dates.SSTab2.setCurrentIndex(core::PeriodChooser::PeriodPage);
    screen.Dates.Text1[core::PeriodChooser::First].setText(
        "01/01/" + screen.Dates.Text1[core::PeriodChooser::Last].text().right(4));
    desk.TakePicture(screen, "F_Dep-dates-periode");
    screen.Dates.Image2[core::PeriodChooser::AcceptPeriod].click();
    desk.TakePicture(screen, "F_Dep-periode");
}

} // namespace

void VisitExpenses(TourDesk& desk, core::Form1& main)
{
    desk.Visit([&desk](forms::Form& form) {
        auto& screen = dynamic_cast<F_Dep&>(form);
        desk.TakePicture(screen, "F_Dep");
        EnterExpense(desk, screen);
        ChangeExpense(desk, screen);
        DeleteExpense(desk, screen);
        ChoosePeriod(desk, screen);
        screen.Crecettes[F_Dep::Quit].click();
    });
    main.Entry("mnu_Deep")->trigger();
}

} // namespace tour
