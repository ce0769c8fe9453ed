#include "planning/Planning.h"

#include "support/Files.h"
#include "support/Reports.h"
#include "support/ScreenTest.h"

using forms::Icon;
using planning::Planning;
using tests::RowOf;

namespace {

/// The units are "ECG" (2), "Radio" (3) and "Consultation" (1), in this order.
class Appointments : public tests::ScreenTest<Planning> {
protected:
    Appointments()
    {
        practice.Service("Radio", 1);
        practice.Write("Update Presta set Ordre = (num + 1) % 3");
    }

    void Appointment(int unit, const dao::Value& slot, const dao::Value& patient = 1)
    {
        practice.Add("Plani", {{"date", "17/06/2008"}, {"Num_Presta", unit}, {"HH", slot}, {"num_patient", patient}});
    }

    /// A small template that prints the selected rows.
    void PutTemplate()
    {
        tests::WriteFile(practice.File("Planning.RPT"), "title = 'Planning'\n[[heading]]\ntext = '{ch4}'\n[rows]\n"
                                                        "select = 'select num from Plani where {selection}'\n"
                                                        "[[column]]\nheading = 'N'\nfield = 'num'\nwidth_mm = 20\n");
    }

    static void OpenList(Planning& board, int row)
    {
        Click(board.Grid1, row);
        Click(board.Image1[Planning::OpenList]);
        ASSERT_TRUE(board.SSPanel1.isVisible());
    }

    QString Heading() { return practice.Ask("select ch4 from textes").Text(); }
};

} // namespace

TEST_F(Appointments, AreListedByHourWithTheirPatients)
{
    practice.Add("Patients", {{"nom", "Haddad"}, {"Prenom", "Ali"}, {"tel", "0550"}, {"N_carte", "0042"}});
    practice.Add("Patients",
                 {{"nom", "Ziani"}, {"Prenom", "Nora"}, {"tel", ""}, {"ville", "Sétif"}, {"N_carte", " 7"}});
    Appointment(2, 9, 2);
    Appointment(2, 0, 3);
    Appointment(2, 0, 99); // a deleted patient
    Appointment(2, 10, 1);
    Appointment(2, -1, dao::Value());
    Appointment(2, dao::Value(), 1);
    Appointment(1, 3, 1);
    practice.Add("Plani", {{"date", "18/06/2008"}, {"Num_Presta", 2}, {"HH", 1}, {"num_patient", 1}});
    practice.Act({.num_presta = 3}); // performed, not programmed

    auto& board = OpenScreen();
    Click(board.Grid1, 1);
    desk.ExpectMessage("Aucune programmation pour cette unité", Icon::None, "");
    Press(board.Grid1, Qt::Key_Return);
    EXPECT_FALSE(board.SSPanel1.isVisible());
    DoubleClick(board.Grid1, 0);

    EXPECT_TRUE(board.SSPanel1.isVisible());
    EXPECT_FALSE(board.SSPanel4.isEnabled());
    EXPECT_EQ(board.UnitLine.text(), "Unité : ECG");
    EXPECT_EQ(board.DayLine.text(), "Journée du Mar  17/06/2008");
    ASSERT_EQ(board.Grid2.Rows(), 6);
    EXPECT_EQ(RowOf(board.Grid2, 0), QStringList({"1", "", " Benali", " Zoé", "", "", ""})); // no hour at all
    EXPECT_EQ(RowOf(board.Grid2, 1), QStringList({"2", "", "", "", "", "", ""}));
    EXPECT_EQ(RowOf(board.Grid2, 2), QStringList({"3", " 8-9", " Ziani", " Nora", " ", " Sétif", "  7"}));
    EXPECT_EQ(RowOf(board.Grid2, 3), QStringList({"4", " 8-9", "", "", "", "", ""}));
    EXPECT_EQ(RowOf(board.Grid2, 4), QStringList({"5", " 17-18", " Haddad", " Ali", " 0550", "", " 0042"}));
    EXPECT_EQ(RowOf(board.Grid2, 5), QStringList({"6", "", " Benali", " Zoé", "", "", ""}));
    EXPECT_EQ(board.Grid2.Row(), 0);
    EXPECT_TRUE(board.Grid2.hasFocus());
    EXPECT_EQ(AccessibilityFaults(board), QStringList());

    Click(board.Image4[Planning::CloseList]);
    EXPECT_TRUE(board.SSPanel4.isEnabled());
    OpenList(board, 2); // one is enough, and the longer list is cleared
    ASSERT_EQ(board.Grid2.Rows(), 1);
    EXPECT_EQ(RowOf(board.Grid2, 0), QStringList({"1", " 11-12", " Benali", " Zoé", "", "", ""}));
}

TEST_F(Appointments, ArePrintedForOneUnitOrForAll)
{
    PutTemplate();
    Appointment(3, 0);
    practice.Add("Plani", {{"date", "16/06/2008"}, {"Num_Presta", 2}, {"HH", 0}, {"num_patient", 1}});
    auto& board = OpenScreen();
    practice.Write("Update Presta set Ordre = num"); // other places, the same units on the board
    OpenList(board, 1);
    Press(board.Grid2, Qt::Key_P, Qt::ControlModifier);
    EXPECT_TRUE(board.SSPanel6.isVisible());
    EXPECT_EQ(board.SSPanel6.Caption(), "Imprimer ...");
    EXPECT_TRUE(board.SSOption1[Planning::CurrentUnit].isChecked());
    ASSERT_TRUE(board.SSOption1[Planning::CurrentUnit].hasFocus());

    tests::ExpectPreview(desk, "Planning 17-06-2008");
    Press(board.SSOption1[Planning::CurrentUnit], Qt::Key_Return);
    EXPECT_EQ(core::ReportName, "Planning.RPT");
    EXPECT_EQ(Heading(), "Planning de la Journée du Mar  17/06/2008");
    EXPECT_EQ(board.Report1.SelectionFormula, "{Plani.date} = date(2008,06,17) and {Plani.Num_Presta} = 3");
    EXPECT_TRUE(board.SSPanel6.isVisible()); // unchanged

    tests::ExpectPreview(desk, "Planning 17-06-2008");
    Press(board.SSOption1[Planning::CurrentUnit], Qt::Key_Down);
    Press(board.SSOption1[Planning::AllUnits], Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(board.Report1.SelectionFormula, "{Plani.date} = date(2008,06,17)");
    Click(board.Image4[Planning::CancelPrint]);
    EXPECT_FALSE(board.SSPanel6.isVisible());
    EXPECT_EQ(board.focusWidget(), &board.Grid2);

    practice.Write("Update textes set ch4 = 'avant'");
    tests::RemoveTemplate(practice, "Planning.RPT");
    DoubleClick(board.Grid2, 0);
    ExpectSaved("Fichier Planning.RPT absent");
    Click(board.Image4[Planning::Print]);
    EXPECT_EQ(Heading(), "avant");
    EXPECT_TRUE(board.SSPanel6.isVisible());
    Press(*board.focusWidget(), Qt::Key_Escape);
    Press(*board.focusWidget(), Qt::Key_Escape);
    Press(board.Grid1, Qt::Key_Left, Qt::AltModifier);
    OpenList(board, 0); // of the day before
    EXPECT_EQ(board.UnitLine.text() + board.DayLine.text(), "Unité : ECGJournée du Lun  16/06/2008");
    EXPECT_EQ(RowOf(board.Grid2, 0).first(4), QStringList({"1", " 8-9", " Benali", " Zoé"}));
    PutTemplate();
    board.SSOption1[Planning::CurrentUnit].setChecked(true);
    tests::ExpectPreview(desk, "Planning 16-06-2008");
    Click(board.Image4[Planning::OpenPrint]);
    Click(board.Image4[Planning::Print]);
    EXPECT_EQ(board.Report1.SelectionFormula, "{Plani.date} = date(2008,06,16) and {Plani.Num_Presta} = 2");
    EXPECT_EQ(Heading(), "Planning de la Journée du Lun  16/06/2008");
}

TEST_F(Appointments, CloseTheirPanelsOneByOne)
{
    Appointment(1, 0);
    Appointment(2, 0);
    auto& board = OpenScreen();
    OpenList(board, 2);
    DoubleClick(board.Grid2, 0);
    Press(board.SSOption1[Planning::CurrentUnit], Qt::Key_Escape);
    EXPECT_FALSE(board.SSPanel6.isVisible());
    EXPECT_TRUE(board.SSPanel1.isVisible());
    Press(board.Grid2, Qt::Key_Escape);
    EXPECT_FALSE(board.SSPanel1.isVisible());
    EXPECT_TRUE(board.Grid1.hasFocus());

    OpenList(board, 2);
    Click(board.Image4[Planning::OpenPrint]);
    Click(board.Image4[Planning::CloseList]); // keeps the print options open
    EXPECT_TRUE(board.SSPanel6.isVisible());
    EXPECT_TRUE(board.SSPanel4.isEnabled());
    PutTemplate();
    Click(board.Grid1, 0);
    tests::ExpectPreview(desk, "Planning 17-06-2008");
    Click(board.Image4[Planning::Print]); // now prints the board's unit
    EXPECT_TRUE(board.Report1.SelectionFormula.endsWith("{Plani.Num_Presta} = 2"));
    Click(board.Image1[Planning::ChooseDay]);
    board.Text5[0].setText("20/06/"); // nothing is printed for an unfinished date
    tests::ExpectPreview(desk, "Planning 17-06-2008");
    Click(board.Image4[Planning::Print]);
    EXPECT_TRUE(board.Report1.SelectionFormula.startsWith("{Plani.date} = date(2008,06,17)"));
    Click(board.Image5[Planning::CancelDay]);
    Press(board.Grid1, Qt::Key_Escape);
    EXPECT_FALSE(board.SSPanel6.isVisible());
    EXPECT_TRUE(board.isVisible());
}
