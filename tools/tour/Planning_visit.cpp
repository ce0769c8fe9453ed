#include "Planning_visit.h"

#include "TourDesk.h"

#include "core/Form1.h"
#include "planning/Planning.h"
#include "platform/report/PreviewWindow.h"

#include <QTest>
#include <QTextStream>

using planning::Planning;

namespace tour {

namespace {

void ChooseDayAndMonth(TourDesk& desk, Planning& board)
{
    desk.TakePicture(board, "Planning");
    board.Image1[Planning::ChooseDay].click();
    desk.TakePicture(board, "Planning-journee");
    QTest::keyClick(&board.Text5[0], Qt::Key_Return);
    board.Image2[Planning::DayBefore].click();
    board.Image1[Planning::ChooseMonth].click();
    board.Combo1[Planning::UnitChoice].SetListIndex(0);
    desk.TakePicture(board, "Planning-programme");
    QTest::keyClick(&board.Text3, Qt::Key_Return);
    desk.TakePicture(board, "Planning-mois");
}

/// Selects a unit with appointments, going back in days until there is one.
void FindAppointments(Planning& board)
{
    constexpr int mostDays = 31;
    for (int day = 0; day < mostDays; ++day, board.Image2[Planning::DayBefore].click()) {
        for (int row = 0; row < board.Grid1.Rows(); ++row) {
            if (board.Grid1.Text(row, Planning::Programmed).isEmpty())
                continue;
            board.Grid1.SetRow(row);
            return board.Grid1_Click();
        }
    }
    TourDesk::Require(false, "aucun rendez-vous dans ce cabinet");
}

void PrintBoth(TourDesk& desk, Planning& board, const QString& pictures)
{
    board.Image4[Planning::OpenPrint].click();
    desk.TakePicture(board, "Planning-imprimer");
    desk.Visit([&desk](forms::Form& form) {
        desk.TakePicture(form, "Preview-Planning-unite");
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    board.Image4[Planning::Print].click();

    board.SSOption1[Planning::AllUnits].click();
    const QString pdf = pictures + "/Planning.pdf";
    desk.Visit([&desk, pdf](forms::Form& form) {
        auto& preview = dynamic_cast<report::PreviewWindow&>(form);
        desk.TakePicture(preview, "Preview-Planning");
        TourDesk::Require(preview.SavePdf(pdf), "PDF non enregistré");
        QTest::keyClick(&preview, Qt::Key_Escape);
    });
    board.Image4[Planning::Print].click();
    QTextStream(stdout) << "Planning : " << pdf << Qt::endl;
    board.Image4[Planning::CancelPrint].click();
}

} // namespace

void VisitPlanning(TourDesk& desk, core::Form1& main, const QString& pictures)
{
    desk.Visit([&desk, pictures](forms::Form& form) {
        auto& board = dynamic_cast<Planning&>(form);
        ChooseDayAndMonth(desk, board);
        FindAppointments(board);
        board.Image1[Planning::OpenList].click();
        desk.TakePicture(board, "Planning-liste");
        PrintBoth(desk, board, pictures);
        board.Image4[Planning::CloseList].click();
        board.Image1[Planning::Quit].click();
    });
    main.Entry("mnu_Recap")->trigger();
}

} // namespace tour
