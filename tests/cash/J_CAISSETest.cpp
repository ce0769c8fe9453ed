#include "cash/J_CAISSE.h"

#include "core/Q_Date_2.h"
#include "core/globals.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/Practice.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

using cash::CorrectionPanel;
using cash::J_CAISSE;
using forms::Icon;
using tests::RowOf;

namespace PaymentCode = data::PaymentCode;

namespace {

class CashStatement : public testing::Test {
protected:
    J_CAISSE& ShowDay(const QString& day)
    {
        practice.Open();
        core::PickedDate = day;
        return desk.Open<J_CAISSE>();
    }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(CashStatement, ReadsTheNewBalanceFromTheFiguresShown)
{
    practice.Act(
        {.day = "16/06/2008", .montant = 100.004, .flag_R = PaymentCode::P}); // shown as 100.00 the evening before
    practice.Act({.montant = 50.004, .flag_R = PaymentCode::P});
    practice.Expense({.montant = 20});

    auto& screen = ShowDay("17/06/2008");

    EXPECT_EQ(screen.SSPanel1.Caption(), "Mouvements de fonds du  Mardi 17/06/2008");
    EXPECT_EQ(screen.RCP[J_CAISSE::DayActs].text(), "1");
    EXPECT_EQ(screen.RCP[J_CAISSE::OpeningBalance].text(), "  100.00");
    EXPECT_EQ(screen.RCP[J_CAISSE::DayReceived].text(), " 50.00 ");
    EXPECT_EQ(screen.RCP[J_CAISSE::DaySpent].text(), "  20.00");
    EXPECT_EQ(screen.RCP[J_CAISSE::NewBalance].text(), "  130.00"); // 100.00 + 50.00 - 20.00, not 130.008
}

TEST_F(CashStatement, ListsEveryServiceAndLeavesZerosEmpty)
{
    practice.Expense({.day = "16/06/2008", .montant = 30});
    practice.Act({.day = "16/06/2008", .montant = 30, .flag_R = PaymentCode::P});

    auto& screen = ShowDay("17/06/2008");

    ASSERT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "", ""}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" ECG", "", ""}));
    for (int figure = 0; figure <= 7; ++figure)
        EXPECT_EQ(screen.RCP[figure].text(), "") << figure; // a balance of exactly 0 isn't shown as "0.00"
}

TEST_F(CashStatement, DistinguishesNoExpenseFromExpensesOfZero)
{
    practice.Expense({.montant = 5});
    practice.Expense({.montant = -5});

    auto& screen = ShowDay("17/06/2008");

    EXPECT_EQ(screen.RCP[J_CAISSE::DaySpent].text(), "  0.00");
    EXPECT_EQ(screen.RCP[J_CAISSE::ExpensesTotal].text(), "");
    EXPECT_EQ(screen.RCP[J_CAISSE::NewBalance].text(), "");
}

TEST_F(CashStatement, CountsANegativeReceiptAsNothing)
{
    practice.Act({.day = "16/06/2008", .montant = 10, .flag_R = PaymentCode::P});
    practice.Act({.montant = -4, .flag_R = PaymentCode::P});

    auto& screen = ShowDay("17/06/2008");

    EXPECT_EQ(screen.RCP[J_CAISSE::DayActs].text(), "1");
    EXPECT_EQ(screen.RCP[J_CAISSE::DayReceived].text(), "");
    EXPECT_EQ(screen.RCP[J_CAISSE::NewBalance].text(), "  10.00");
    EXPECT_EQ(screen.Grid1.Text(0, J_CAISSE::Received), "");
}

TEST_F(CashStatement, CarriesActsWithoutServiceOverToTheNextBalance)
{
    practice.Act({.montant = 70, .flag_R = PaymentCode::P, .num_presta = 99});
    practice.Act({.montant = 30.5, .flag_R = PaymentCode::RMinus});

    auto& today = ShowDay("17/06/2008");
    EXPECT_EQ(today.RCP[J_CAISSE::DayActs].text(), "1");
    EXPECT_EQ(today.RCP[J_CAISSE::DayReceived].text(), " 30.50 ");
    EXPECT_EQ(today.Grid1.Text(0, J_CAISSE::Received), "30.5 "); // the cell shows the unrounded number
    EXPECT_EQ(RowOf(today.Grid2, 0), QStringList({"1", " Benali", " Zoé", "", " 8-9", "P ", "70 "}));
    EXPECT_EQ(RowOf(today.Grid3, 0), QStringList({"1", " Benali", " Zoé", " Consultation", " 8-9", "R-", "30.5 "}));

    today.ShowCashDay("18/06/2008");
    EXPECT_EQ(today.RCP[J_CAISSE::OpeningBalance].text(), "  100.50");
}

TEST_F(CashStatement, ListsByKeyAndShowsZeroOnlyWhenSettled)
{
    practice.Patient("Haddad", dao::Value());
    practice.Act({.montant = 0, .flag_R = PaymentCode::Gr, .num_patient = 2, .HH = 9});
    practice.Act({.montant = 0, .flag_R = PaymentCode::NP, .num_patient = 77, .HH = 5});
    practice.Expense({.montant = 12.5, .objet = "  L'eau <b>&  "});

    auto& screen = ShowDay("17/06/2008");

    EXPECT_EQ(RowOf(screen.Grid2, 0), QStringList({"1", " Haddad", " ", " Consultation", " 17-18", "Gr", "0 "}));
    EXPECT_EQ(RowOf(screen.Grid3, 0), QStringList({"1", "", "", " Consultation", " 13-14", "NP", ""}));
    EXPECT_EQ(RowOf(screen.Grid4, 0), QStringList({"1", " L'eau <b>&", "12.5 "}));
    EXPECT_EQ(screen.RCP[J_CAISSE::ExpensesTotal].text(), "  12.50");
}

TEST_F(CashStatement, SettlesAPendingActByKeyboard)
{
    practice.Act({.day = "16/06/2008"});
    const dao::Key act = practice.Act({});
    practice.Act({.montant = 40, .flag_R = PaymentCode::RMinus});
    auto& screen = ShowDay("17/06/2008");
    for (int tab = 0; tab < J_CAISSE::PendingTab; ++tab)
        Press(*screen.focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);

    Press(*screen.focusWidget(), Qt::Key_Return);
    ASSERT_TRUE(screen.SSPanel2.isVisible());
    EXPECT_FALSE(screen.SSTab1.isEnabled());
    EXPECT_EQ(screen.SSPanel2.LastName.text(), " Benali");
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "");
    Press(screen.SSPanel2.Code, Qt::Key_Down);
    Press(screen.SSPanel2.Code, Qt::Key_Down);
    Type(screen.SSPanel2.Amount, "1 250,5x");
    Press(screen.SSPanel2.Amount, Qt::Key_Return);
    desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
    Press(screen.SSPanel2.Image3[CorrectionPanel::Accept], Qt::Key_Return);

    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
    EXPECT_EQ(practice.Stored("Actes", act, "flag_R").Long(), PaymentCode::P);
    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 1250.5);
    EXPECT_EQ(practice.Stored("Actes", act, "Date").Text(), "17/06/2008");
    EXPECT_EQ(screen.Grid2.Text(0, J_CAISSE::Amount), "1250.5 ");
    EXPECT_EQ(screen.Grid3.Rows(), 1);
    EXPECT_EQ(screen.Grid3.Text(0, J_CAISSE::Code), "R-");
    EXPECT_EQ(screen.RCP[J_CAISSE::DayReceived].text(), "1 290.50 ");
}

TEST_F(CashStatement, ChangesNothingWhenTheCorrectionIsCancelled)
{
    const dao::Key act = practice.Act({.montant = 15, .flag_R = PaymentCode::RMinus});
    auto& screen = ShowDay("17/06/2008");
    screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);

    DoubleClick(screen.Grid3, 0);
    ASSERT_TRUE(screen.SSPanel2.isVisible());
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "15");
    screen.SSPanel2.Amount.setText("99");
    Press(screen, Qt::Key_Escape);

    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 15);
}

TEST_F(CashStatement, WritesToNoOtherActWhenOneWasDeleted)
{
    const dao::Key first = practice.Act({.montant = 1, .flag_R = PaymentCode::RMinus});
    const dao::Key second = practice.Act({.montant = 2, .flag_R = PaymentCode::RMinus});
    practice.Act({.montant = 3, .flag_R = PaymentCode::RMinus});
    auto& screen = ShowDay("17/06/2008");
    screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
    const auto expectGone = [this] {
        desk.ExpectMessage("Cet acte n'existe plus : il a été supprimé entre-temps.", Icon::Critical, "ATTENTION");
    };

    Click(screen.Grid3, 2);
    Press(screen.Grid3, Qt::Key_F2);
    practice.Remove("Actes", practice.Ask("select max(num) as S1 from Actes").Long());
    expectGone();
    Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_EQ(screen.Grid3.Rows(), 2); // the current acts of the day

    practice.Remove("Actes", second);
    Click(screen.Grid3, 1);
    expectGone();
    Click(screen.Image2[J_CAISSE::Correct]);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
    EXPECT_EQ(practice.Stored("Actes", first, "montant").Double(), 1);
    EXPECT_FALSE(desk.EndCode().has_value());
}

TEST_F(CashStatement, DropsACorrectionWhenTheDayChanges)
{
    const dao::Key act = practice.Act({.day = "16/06/2008", .montant = 9, .flag_R = PaymentCode::RMinus});
    auto& screen = ShowDay("16/06/2008");
    screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
    DoubleClick(screen.Grid3, 0);
    screen.SSPanel2.Amount.setText("-50");

    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) { Click(picker.Image2[core::Q_Date_2::CancelDay]); });
    Click(screen.Image1[J_CAISSE::OtherDate]);
    EXPECT_TRUE(screen.SSPanel2.isVisible()); // no other day, nothing discarded

    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) { Click(picker.Image2[core::Q_Date_2::AcceptDay]); });
    Press(screen.SSPanel2.Amount, Qt::Key_F4);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
    EXPECT_EQ(screen.SSPanel1.Tag, "17/06/2008");
    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 9);
}

TEST_F(CashStatement, AcceptsNegativeAndLargeAmounts)
{
    const dao::Key act = practice.Act({});
    auto& screen = ShowDay("17/06/2008");
    const auto correct = [&](const char* amount) {
        screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
        Click(screen.Image2[J_CAISSE::Correct]);
        screen.SSPanel2.Amount.setText("");
        Type(screen.SSPanel2.Amount, amount);
        desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
        Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    };
    correct("-123456789.5");
    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), -123456789.5);
    EXPECT_EQ(screen.RCP[J_CAISSE::PendingTotal].text(), "-123 456 789.50");
    EXPECT_EQ(screen.RCP[J_CAISSE::DayReceived].text(), "");
    correct("123456789.5");
    EXPECT_EQ(screen.RCP[J_CAISSE::DayReceived].text(), "123456 789.50 ");
    EXPECT_EQ(screen.RCP[J_CAISSE::NewBalance].text(), "123 456 789.50");
}

TEST_F(CashStatement, DoesNothingWithoutAPendingAct)
{
    auto& screen = ShowDay("17/06/2008");
    screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);

    DoubleClick(screen.Grid3, 0);
    Click(screen.Image2[J_CAISSE::Correct]);

    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
}

TEST_F(CashStatement, CorrectingYesterdayChangesTodaysOpeningBalance)
{
    practice.Act({.day = "16/06/2008"});
    auto& screen = ShowDay("16/06/2008");
    screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
    Click(screen.Image2[J_CAISSE::Correct]);
    screen.SSPanel2.Code.SetListIndex(PaymentCode::P);
    screen.SSPanel2.Amount.setText("800");
    desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
    Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);

    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) {
        EXPECT_EQ(picker.Label2.text(), "17"); // today, not the day shown before
        Click(picker.Image2[core::Q_Date_2::AcceptDay]);
    });
    Click(screen.Image1[J_CAISSE::OtherDate]);

    EXPECT_EQ(screen.SSPanel1.Tag, "17/06/2008");
    EXPECT_EQ(screen.RCP[J_CAISSE::OpeningBalance].text(), "  800.00");
    EXPECT_EQ(screen.RCP[J_CAISSE::NewBalance].text(), "  800.00");

    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) { Click(picker.Image2[core::Q_Date_2::CancelDay]); });
    Click(screen.Image1[J_CAISSE::OtherDate]);
    EXPECT_EQ(screen.SSPanel1.Tag, "17/06/2008");
}

TEST_F(CashStatement, EndsTheProgramOnUnknownCodes)
{
    practice.Act({.montant = 1, .flag_R = 6});
    practice.Open();
    core::PickedDate = "17/06/2008";
    EXPECT_EQ(ErrorOf([] { J_CAISSE().Load(); }), Error::IndexOutOfRange);
}

TEST_F(CashStatement, SpeaksBothLanguagesAndNamesEveryControl)
{
    auto& screen = ShowDay("17/06/2008");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());

    screen.Image1[J_CAISSE::Quit].setFocus();
    EXPECT_EQ(screen.Bulle.text(), " Quitter ");
    core::LanguageMode = core::Arabic;
    screen.Image1[J_CAISSE::OtherDate].setFocus();
    EXPECT_TRUE(screen.Bulle.isVisible());
    EXPECT_EQ(screen.Bulle.text(), "تـغـيير");
    screen.SSTab1.setFocus();
    EXPECT_FALSE(screen.Bulle.isVisible());
}
