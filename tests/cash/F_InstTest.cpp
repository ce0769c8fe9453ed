#include "cash/F_Inst.h"

#include "core/globals.h"
#include "platform/basic/RuntimeError.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/Dates.h"
#include "support/Reports.h"

using cash::CorrectionPanel;
using cash::F_Inst;
using core::PeriodChooser;
using forms::Icon;
using tests::RowOf;

namespace PaymentCode = data::PaymentCode;

namespace {

class PendingSettlements : public testing::Test {
protected:
    F_Inst& OpenScreen()
    {
        practice.Open();
        return desk.Open<F_Inst>();
    }

    static void ListDay(F_Inst& screen, const QString& day)
    {
        if (!screen.Dates.SSTab2.isVisible())
            Click(screen.Image1[F_Inst::OtherDate]);
        tests::AcceptDay(screen.Dates, day);
    }

    static void ListPeriod(F_Inst& screen, const QString& first, const QString& last)
    {
        if (!screen.Dates.SSTab2.isVisible())
            Click(screen.Image1[F_Inst::OtherDate]);
        tests::AcceptPeriod(screen.Dates, first, last);
    }

    /// Settles the current act in the opened panel.
    void Settle(F_Inst& screen, int code, const QString& amount)
    {
        screen.SSPanel2.Code.SetListIndex(code);
        screen.SSPanel2.Amount.setText(amount);
        desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
        Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    }

    static bool IsChoosing(F_Inst& screen)
    {
        return screen.Dates.SSTab2.isVisible() && !screen.SSPanel2.isVisible() && !PicturesShow(screen);
    }
    static bool IsBrowsing(F_Inst& screen)
    {
        return !screen.Dates.SSTab2.isVisible() && !screen.SSPanel2.isVisible() && PicturesShow(screen);
    }
    static bool IsCorrecting(F_Inst& screen)
    {
        return !screen.Dates.SSTab2.isVisible() && screen.SSPanel2.isVisible() && !PicturesShow(screen);
    }

    tests::Practice practice;
    ScriptedDesk desk;

private:
    static bool PicturesShow(F_Inst& screen)
    {
        EXPECT_TRUE(screen.Image1[F_Inst::Quit].isVisible()); // in every mode
        const bool shown = screen.Image1[F_Inst::OtherDate].isVisible();
        EXPECT_EQ(screen.Image1[F_Inst::Correct].isVisible(), shown);
        EXPECT_EQ(screen.Image1[F_Inst::Print].isVisible(), shown);
        return shown;
    }
};

} // namespace

TEST_F(PendingSettlements, OpensOnTheChoiceOfDatesWithNothingListed)
{
    practice.Act({});
    auto& screen = OpenScreen();

    EXPECT_TRUE(IsChoosing(screen));
    for (int field = 0; field <= 2; ++field)
        EXPECT_EQ(screen.Dates.Text1[field].text(), "17/06/2008");
    EXPECT_EQ(screen.SSPanel1.Caption(), "");
    EXPECT_EQ(screen.Grid3.Rows(), 1);
    EXPECT_EQ(screen.Grid3.Text(0, cash::ActColumn::Number), "");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
}

TEST_F(PendingSettlements, ListsTheUnpaidActsOfADayAndSumsWhatWasReceived)
{
    practice.Patient("Haddad", dao::Value());
    practice.Act({.day = "16/06/2008"});
    practice.Act({.montant = 500, .flag_R = PaymentCode::P});
    practice.Act({});
    practice.Act({.montant = 1234.5, .flag_R = PaymentCode::RMinus, .num_patient = 2, .num_presta = 2});
    practice.Add("Actes", {{"Date", "17/06/2008"},
                           {"date_Presta", "15/06/2008"},
                           {"flag_R", 0},
                           {"num_patient", 77},
                           {"num_presta", 99},
                           {"montant", dao::Value()}});
    practice.Add("Actes", {{"Date", "17/06/2008"}, {"flag_R", 0}});

    auto& screen = OpenScreen();
    ListDay(screen, "17/06/2008");

    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Journée du Mar  17/06/2008");
    ASSERT_EQ(screen.Grid3.Rows(), 4);
    EXPECT_EQ(RowOf(screen.Grid3, 0),
              QStringList({"1", " Benali", " Zoé", " Consultation", "17/06/2008", "08:30", "NP", ""}));
    EXPECT_EQ(RowOf(screen.Grid3, 1),
              QStringList({"2", " Haddad", "", " ECG", "17/06/2008", "08:30", "R-", "1234.5 "}));
    EXPECT_EQ(RowOf(screen.Grid3, 2), QStringList({"3", "", "", "", "15/06/2008", "", "NP", ""}));
    EXPECT_EQ(RowOf(screen.Grid3, 3), QStringList({"4", "", "", "", "", "", "NP", ""}));
    EXPECT_EQ(screen.RCP.text(), " 1 234.50");
    EXPECT_EQ(screen.Grid3.Row(), 0);

    ListDay(screen, "14/06/2008"); // nothing pending: no message, list cleared
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid3.Rows(), 1);
    EXPECT_EQ(screen.Grid3.Text(0, cash::ActColumn::Number), "");
    EXPECT_EQ(screen.RCP.text(), "");
    Click(screen.Image1[F_Inst::Correct]);
    DoubleClick(screen.Grid3, 0);
    EXPECT_TRUE(IsBrowsing(screen));
}

TEST_F(PendingSettlements, IncludesBothEndsOfAPeriod)
{
    for (const char* day : {"31/12/2007", "01/01/2008", "29/02/2008", "17/06/2008", "18/06/2008"})
        practice.Act({.day = day, .montant = 10, .flag_R = PaymentCode::RMinus});
    auto& screen = OpenScreen();

    ListPeriod(screen, "01/01/2008", "17/06/2008");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Mar  01/01/2008 au Mar  17/06/2008");
    EXPECT_EQ(screen.Grid3.Rows(), 3);
    EXPECT_EQ(screen.RCP.text(), "  30.00");

    practice.Act({.day = "02/01/2008", .montant = 10, .flag_R = PaymentCode::RMinus}); // entered after the others
    ListPeriod(screen, "01/01/2008", "17/06/2008");
    EXPECT_EQ(screen.Grid3.Text(3, F_Inst::Date), "02/01/2008") << "in the order of their entry";

    ListPeriod(screen, "17/06/2008", "17/06/2008");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Mar  17/06/2008 au Mar  17/06/2008");
    EXPECT_EQ(screen.Grid3.Rows(), 1);
    EXPECT_EQ(screen.Grid3.Text(0, F_Inst::Date), "17/06/2008");
}

TEST_F(PendingSettlements, RefusesMissingInvalidOrInvertedDates)
{
    practice.Act({});
    auto& screen = OpenScreen();
    auto& dates = screen.Dates;

    Type(dates.Text1[PeriodChooser::Day], "31062008");
    desk.ExpectMessage("Date incorrecte", Icon::Critical, "ATTENTION");
    Press(dates.Text1[PeriodChooser::Day], Qt::Key_Return);
    EXPECT_EQ(desk.BeepCount(), 1);
    EXPECT_EQ(dates.Text1[PeriodChooser::Day].text(), "");
    EXPECT_TRUE(dates.Text1[PeriodChooser::Day].hasFocus());
    dates.SSTab2.setFocus(); // too short, in a field without focus
    desk.ExpectMessage("Date incorrecte", Icon::Critical, "ATTENTION");
    ListDay(screen, "17/06/208");

    const struct {
        const char *first, *last, *message;
        PeriodChooser::Field focused;
    } periods[] = {
        {"", "17/06/2008", "Saisie incomplète", PeriodChooser::First},
        {"17/06/2008", "17/06/20", "Saisie incomplète", PeriodChooser::Last},
        {"17/06/2008", "17/06x/2008", "Date incorrecte", PeriodChooser::Last},
    };
    for (const auto& period : periods) {
        desk.ExpectMessage(period.message, Icon::Critical, "ATTENTION");
        ListPeriod(screen, period.first, period.last);
        EXPECT_TRUE(dates.Text1[period.focused].hasFocus()) << period.last;
    }
    EXPECT_TRUE(IsChoosing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "");

    desk.ExpectMessage("Dates inversées", Icon::Critical, "ZEP Lumo");
    ListPeriod(screen, "17/06/2008", "15/06/2008");
    EXPECT_TRUE(IsChoosing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Mar  17/06/2008 au Dim  15/06/2008"); // the refused one
    EXPECT_EQ(screen.Grid3.Text(0, cash::ActColumn::Number), "");

    ListPeriod(screen, "17/06/2008", "16/06/2008"); // one day before is the empty period
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid3.Text(0, cash::ActColumn::Number), "");
}

TEST_F(PendingSettlements, KeepsTheListWhenTheChoiceIsCancelled)
{
    practice.Act({});
    auto& screen = OpenScreen();
    Click(screen.Dates.Image2[PeriodChooser::CancelDay]); // before anything was listed
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid3.Text(0, cash::ActColumn::Number), "");

    ListDay(screen, "17/06/2008");
    Click(screen.Image1[F_Inst::OtherDate]);
    EXPECT_TRUE(IsChoosing(screen));
    screen.Dates.SSTab2.setCurrentIndex(PeriodChooser::PeriodPage);
    Click(screen.Dates.Image2[PeriodChooser::CancelPeriod]);
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid3.Text(0, cash::ActColumn::Number), "1");

    Click(screen.Image1[F_Inst::OtherDate]);
    Press(screen.Dates.Text1[PeriodChooser::First], Qt::Key_Escape);
    EXPECT_TRUE(IsBrowsing(screen));
    Press(screen.Grid3, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    Click(screen.Image1[F_Inst::Quit]);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(PendingSettlements, SettlesByKeyboardAndKeepsTheSettledActListed)
{
    practice.Act({.day = "10/06/2008", .montant = 100.25, .flag_R = PaymentCode::RMinus});
    const dao::Key act = practice.Act({.day = "11/06/2008"});
    practice.Act({.day = "12/06/2008"});
    auto& screen = OpenScreen();

    ASSERT_TRUE(screen.Dates.Text1[PeriodChooser::Day].hasFocus());
    Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Tab, Qt::ControlModifier);
    Type(screen.Dates.Text1[PeriodChooser::First], "01062008");
    Press(screen.Dates.Text1[PeriodChooser::First], Qt::Key_Return);
    ASSERT_TRUE(screen.Dates.Text1[PeriodChooser::Last].hasFocus());
    Press(screen.Dates.Text1[PeriodChooser::Last], Qt::Key_Return);
    ASSERT_TRUE(screen.Grid3.hasFocus());
    Press(screen.Grid3, Qt::Key_Down);
    Press(screen.Grid3, Qt::Key_Return);
    ASSERT_TRUE(IsCorrecting(screen));
    EXPECT_EQ(screen.SSPanel2.LastName.text(), " Benali");
    EXPECT_EQ(screen.SSPanel2.FirstName.text(), " Zoé");
    EXPECT_EQ(screen.SSPanel2.Service.text(), " Consultation");
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "");
    Press(screen.SSPanel2.Code, Qt::Key_Down);
    Press(screen.SSPanel2.Code, Qt::Key_Down);
    Type(screen.SSPanel2.Amount, "1234,5x");
    Press(screen.SSPanel2.Amount, Qt::Key_Return);
    desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
    Press(screen.SSPanel2.Image3[CorrectionPanel::Accept], Qt::Key_Return);

    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(practice.Stored("Actes", act, "flag_R").Long(), PaymentCode::P);
    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 1234.5);
    EXPECT_EQ(practice.Stored("Actes", act, "Date").Text(), "11/06/2008");
    ASSERT_EQ(screen.Grid3.Rows(), 3);
    EXPECT_EQ(screen.Grid3.Text(1, F_Inst::Code), "P ");
    EXPECT_EQ(screen.Grid3.Text(1, F_Inst::Amount), "1234.5 ");
    EXPECT_EQ(screen.RCP.text(), "1334.75"); // plain until the next selection

    EXPECT_EQ(screen.Grid3.Row(), 1); // the corrected act, for arrows and Enter
    EXPECT_EQ(screen.Grid3.selectionModel()->selectedRows().value(0).row(), 1);
    ASSERT_TRUE(screen.Grid3.hasFocus());
    Press(screen.Grid3, Qt::Key_Return); // opens the highlighted act again
    EXPECT_EQ(screen.SSPanel2.LastName.text(), " Benali");
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "1234.5");
    EXPECT_EQ(screen.SSPanel2.Code.currentText(), "P ");
    Press(screen.SSPanel2.Code, Qt::Key_Escape);
    EXPECT_TRUE(IsBrowsing(screen));

    ListPeriod(screen, "01/06/2008", "17/06/2008");
    EXPECT_EQ(screen.Grid3.Rows(), 2);
    EXPECT_EQ(screen.RCP.text(), "  100.25");
}

TEST_F(PendingSettlements, WritesZeroForAnEmptyAmount)
{
    const dao::Key act = practice.Act({.montant = 15, .flag_R = PaymentCode::RMinus});
    auto& screen = OpenScreen();
    ListDay(screen, "17/06/2008");

    DoubleClick(screen.Grid3, 0);
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "15");
    Settle(screen, PaymentCode::RMinus, "");

    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 0);
    EXPECT_EQ(screen.Grid3.Text(0, F_Inst::Amount), " ");
    EXPECT_EQ(screen.RCP.text(), "");
}

TEST_F(PendingSettlements, CorrectsTheActShownInThePanelWhateverRowIsClicked)
{
    const dao::Key first = practice.Act({});
    const dao::Key second = practice.Act({.montant = 5, .flag_R = PaymentCode::RMinus});
    auto& screen = OpenScreen();
    ListDay(screen, "17/06/2008");

    Click(screen.Image1[F_Inst::Correct]);
    screen.Grid3.SetRow(1);
    screen.Grid3_Click();
    Settle(screen, PaymentCode::P, "70");

    EXPECT_EQ(practice.Stored("Actes", first, "montant").Double(), 70);
    EXPECT_EQ(practice.Stored("Actes", second, "montant").Double(), 5);
    EXPECT_EQ(screen.Grid3.Text(0, F_Inst::Amount), "70 ");
    EXPECT_EQ(screen.Grid3.Text(1, F_Inst::Amount), "5 ");
    EXPECT_EQ(screen.RCP.text(), "75");
}

TEST_F(PendingSettlements, ContinuesFromTheLastCorrectedAct)
{
    for (const double amount : {10.0, 20.0, 30.0, 40.0})
        practice.Act({.montant = amount, .flag_R = PaymentCode::RMinus});
    auto& screen = OpenScreen();
    ListDay(screen, "17/06/2008");
    for (const int row : {2, 1}) {
        Click(screen.Grid3, row);
        Click(screen.Image1[F_Inst::Correct]);
        Settle(screen, PaymentCode::P, "-5");
        EXPECT_EQ(screen.Grid3.selectionModel()->selectedRows().value(0).row(), row);
    }
    EXPECT_EQ(screen.RCP.text(), "40"); // 10 - 5 - 5 + 40
    Press(screen.Grid3, Qt::Key_Down);
    Press(screen.Grid3, Qt::Key_F2);
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "-5");
    EXPECT_EQ(screen.Grid3.Row(), 2);
    Press(screen, Qt::Key_Escape);
}

TEST_F(PendingSettlements, WritesToNoOtherActWhenOneWasDeleted)
{
    const dao::Key first = practice.Act({.montant = 1, .flag_R = PaymentCode::RMinus});
    const dao::Key second = practice.Act({.montant = 2, .flag_R = PaymentCode::RMinus});
    auto& screen = OpenScreen();
    ListDay(screen, "17/06/2008");
    Click(screen.Grid3, 1);
    Click(screen.Image1[F_Inst::Correct]);
    practice.Remove("Actes", second);

    desk.ExpectMessage("Cet acte n'existe plus : il a été supprimé entre-temps.", Icon::Critical, "ATTENTION");
    Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid3.Text(1, F_Inst::Amount), "2 ");

    desk.ExpectMessage("Cet acte n'existe plus : il a été supprimé entre-temps.", Icon::Critical, "ATTENTION");
    Click(screen.Image1[F_Inst::Correct]);
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(practice.Stored("Actes", first, "montant").Double(), 1);
}

TEST_F(PendingSettlements, SettlesActsThatLackPatientOrAmount)
{
    const dao::Key act =
        practice.Add("Actes", {{"Date", "17/06/2008"}, {"flag_R", 0}, {"num_patient", 77}, {"montant", dao::Value()}});
    auto& screen = OpenScreen();
    ListDay(screen, "17/06/2008");

    Click(screen.Image1[F_Inst::Correct]);
    ASSERT_TRUE(IsCorrecting(screen));
    EXPECT_EQ(screen.SSPanel2.LastName.text(), "");
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "");
    Settle(screen, PaymentCode::P, "70");

    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 70);
}

TEST_F(PendingSettlements, EndsTheProgramOnAnUnknownCode)
{
    practice.Act({.flag_R = -1});
    auto& screen = OpenScreen();
    EXPECT_EQ(ErrorOf([&] { screen.Image2_Click(PeriodChooser::AcceptDay); }), Error::IndexOutOfRange);
}

TEST_F(PendingSettlements, PrintsTheListAsShownEvenIfEmpty)
{
    tests::PutTemplate(practice, "ZEP_DTAL.RPT");
    const QString first = QString::number(practice.Act({}));
    const QString second = QString::number(practice.Act({.montant = 5, .flag_R = PaymentCode::RMinus}));
    auto& screen = OpenScreen();
    core::TheDatabase.Execute("Update textes set ch6 = 'total', ch7 = 'total'");
    ListDay(screen, "17/06/2008");
    Click(screen.Image1[F_Inst::Correct]);
    Settle(screen, PaymentCode::P, "70"); // stays listed, and so is printed

    tests::ExpectPreview(desk, "Règlements en instance Journée du Mar 17-06-2008");
    Click(screen.Image1[F_Inst::Print]);
    EXPECT_EQ(tests::RowsOf(practice, "select ch4, ch5, ch6, ch7 from textes"),
              QStringList("Règlements en instance|Journée du Mar  17/06/2008||"));
    EXPECT_EQ(tests::RowsOf(practice, "select num, unite, Page, Mt from Prov"),
              QStringList({first + "|-|-|-", second + "|-|-|-"}));

    ListDay(screen, "14/06/2008");
    tests::ExpectPreview(desk, "Règlements en instance Journée du Sam 14-06-2008");
    Click(screen.Image1[F_Inst::Print]);
    EXPECT_EQ(tests::RowsOf(practice, "select num from Prov"), QStringList());

    tests::RemoveTemplate(practice, "ZEP_DTAL.RPT");
    desk.ExpectMessage("Fichier ZEP_DTAL.RPT absent", Icon::Information, "ZEP Lumo");
    Click(screen.Image1[F_Inst::Print]);
}
