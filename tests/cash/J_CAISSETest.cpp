#include "cash/J_CAISSE.h"

#include "core/Q_Date_2.h"
#include "platform/host/Host.h"
#include "support/Files.h"
#include "support/ScreenTest.h"

#include <QProcess>

using cash::CorrectionPanel;
using cash::J_CAISSE;
using core::Q_Date_2;
using tests::RowOf;

namespace PaymentCode = data::PaymentCode;

namespace {

class CashStatement : public tests::ScreenTest<J_CAISSE> {
protected:
    CashStatement() { practice.Service("Radio", -1); } // first in the lists, with the last key

    J_CAISSE& ShowDay(const QString& day = "17/06/2008")
    {
        core::PickedDate = day;
        return OpenScreen();
    }

    /// Opens the correction of the first pending act, or of another.
    static void Correct(J_CAISSE& screen, int row = 0)
    {
        screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
        Click(screen.Grid3, row);
        Click(screen.Image2[J_CAISSE::Correct]);
    }

    void PickDay(J_CAISSE& screen, int answer)
    {
        desk.WhenModal<Q_Date_2>([answer](Q_Date_2& picker) {
            EXPECT_EQ(picker.Label2.text(), "17"); // today, not the day shown before
            Click(picker.Image2[answer]);
        });
        Press(screen, Qt::Key_F4);
    }

    static QStringList Figures(J_CAISSE& screen) { return tests::TextsOf(screen.RCP); }
};

} // namespace

TEST_F(CashStatement, ReadsTheNewBalanceFromTheFiguresShown)
{
    practice.Act(
        {.day = "16/06/2008", .montant = 100.004, .flag_R = PaymentCode::P}); // shown as 100.00 the evening before
    practice.Act({.montant = 50.004, .flag_R = PaymentCode::P});
    practice.Act({.montant = 0.5, .flag_R = PaymentCode::RMinus, .num_presta = 3});
    practice.Expense({.montant = 20});

    auto& screen = ShowDay();

    EXPECT_EQ(screen.SSPanel1.Caption(), "Mouvements de fonds du  Mardi 17/06/2008");
    // 100.00 + 50.50 - 20.00, not 130.508
    EXPECT_EQ(Figures(screen),
              QStringList({"2", "  100.00", " 50.50 ", "  20.00", "  130.50", "  50.00", "  0.50", "  20.00"}));
    EXPECT_EQ(screen.RCP[J_CAISSE::NewBalance].property("role"), "balance");
    EXPECT_TRUE(tests::IsUnder(screen.RCP[J_CAISSE::DayActs], screen.Grid1, J_CAISSE::Count));
    EXPECT_TRUE(tests::IsUnder(screen.RCP[J_CAISSE::DayReceived], screen.Grid1, J_CAISSE::Received));
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Radio", "1", "0.5 "})); // the cell shows the unrounded number
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Consultation", "1", "50.004 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({" ECG", "", ""}));
}

TEST_F(CashStatement, LeavesZerosEmptyAndKeepsSigns)
{
    practice.Expense({.day = "16/06/2008", .montant = 30});
    practice.Act({.day = "16/06/2008", .montant = 30, .flag_R = PaymentCode::P});
    auto& screen = ShowDay();
    EXPECT_EQ(Figures(screen), QStringList(8, "")); // a balance of exactly 0 isn't shown as "0.00"

    practice.Expense({.montant = 5}); // no expense isn't the same as expenses of zero
    practice.Expense({.montant = -5});
    practice.Act({.montant = -4, .flag_R = PaymentCode::P}); // and a negative receipt counts as nothing
    screen.ShowCashDay("17/06/2008");
    EXPECT_EQ(Figures(screen), QStringList({"1", "", "", "  0.00", "", "-  4.00", "", ""}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Consultation", "1", ""}));

    practice.Expense({.montant = 70}); // more than was received
    practice.Expense({.day = "16/06/2008", .montant = 1});
    practice.Act({.montant = -3, .flag_R = PaymentCode::RMinus});
    screen.ShowCashDay("17/06/2008");
    EXPECT_EQ(Figures(screen),
              QStringList({"2", "-  1.00", "", "  70.00", "-  71.00", "-  4.00", "-  3.00", "  70.00"}));
}

TEST_F(CashStatement, CarriesActsWithoutServiceOverToTheNextBalance)
{
    practice.Act({.montant = 70, .flag_R = PaymentCode::P, .num_presta = 99});
    practice.Act({.montant = 30.5, .flag_R = PaymentCode::RMinus});
    auto& today = ShowDay();
    EXPECT_EQ(today.RCP[J_CAISSE::DayActs].text(), "1");
    EXPECT_EQ(today.RCP[J_CAISSE::DayReceived].text(), " 30.50 ");
    EXPECT_EQ(RowOf(today.Grid2, 0), QStringList({"1", " Benali", " Zoé", "", " 8-9", "P ", "70 "}));
    today.ShowCashDay("18/06/2008");
    EXPECT_EQ(today.RCP[J_CAISSE::OpeningBalance].text(), "  100.50");
}

TEST_F(CashStatement, ListsByKeyAndShowsZeroOnlyWhenSettled)
{
    practice.Patient("Haddad", dao::Value());
    practice.Act({.day = "16/06/2008"});
    practice.Act({.montant = 0, .flag_R = PaymentCode::Gr, .num_patient = 2, .HH = 9});
    practice.Act({.montant = 0, .flag_R = PaymentCode::NP, .num_patient = 77, .num_presta = 3, .HH = 5});
    practice.Expense({.montant = 12.5, .objet = "  L'eau <b>&  "});
    auto& screen = ShowDay();
    EXPECT_EQ(RowOf(screen.Grid2, 0), QStringList({"1", " Haddad", " ", " Consultation", " 17-18", "Gr", "0 "}));
    EXPECT_EQ(RowOf(screen.Grid3, 0), QStringList({"1", "", "", " Radio", " 13-14", "NP", ""}));
    EXPECT_EQ(RowOf(screen.Grid4, 0), QStringList({"1", " L'eau <b>&", "12.5 "}));

    practice.Act({.day = "18/06/2008", .flag_R = 6});
    EXPECT_EQ(ErrorOf([&] { screen.ShowCashDay("18/06/2008"); }), Error::IndexOutOfRange);
}

TEST_F(CashStatement, MovesASettledActToItsListAndIntoTheBalances)
{
    practice.Act({.day = "16/06/2008", .montant = 9, .flag_R = PaymentCode::RMinus});
    practice.Act({.montant = 40, .flag_R = PaymentCode::RMinus});
    const dao::Key act = practice.Act({});
    auto& screen = ShowDay();
    for (int tab = 0; tab < J_CAISSE::PendingTab; ++tab)
        Press(*screen.focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);
    Press(*screen.focusWidget(), Qt::Key_Down);
    Press(*screen.focusWidget(), Qt::Key_Return);
    ASSERT_TRUE(screen.SSPanel2.isVisible());
    EXPECT_FALSE(screen.SSTab1.isEnabled());
    screen.SSPanel2.Code.SetListIndex(PaymentCode::P);
    Type(screen.SSPanel2.Amount, "123456789.5");
    ExpectSaved("Correction enregistrée");
    Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);

    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 123456789.5);
    EXPECT_EQ(screen.Grid2.Text(0, J_CAISSE::Amount), "123456789.5 ");
    EXPECT_EQ(tests::ColumnOf(screen.Grid3, J_CAISSE::Code), QStringList("R-"));
    EXPECT_EQ(Figures(screen),
              QStringList({"2", "  9.00", "123456 829.50 ", "", "123 456 838.50", "123 456 789.50", "  40.00", ""}));
    PickDay(screen, Q_Date_2::CancelDay);
    EXPECT_EQ(screen.SSPanel1.Tag, "17/06/2008");
}

TEST_F(CashStatement, DropsACorrectionWhenTheDayChanges)
{
    const dao::Key act = practice.Act({.day = "16/06/2008", .montant = 9, .flag_R = PaymentCode::RMinus});
    auto& screen = ShowDay("16/06/2008");
    screen.SSTab1.setCurrentIndex(J_CAISSE::PendingTab);
    DoubleClick(screen.Grid3, 0);
    Press(screen, Qt::Key_Escape);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
    Correct(screen);
    screen.SSPanel2.Amount.setText("-50");
    PickDay(screen, Q_Date_2::CancelDay);
    EXPECT_TRUE(screen.SSPanel2.isVisible()); // no other day, nothing discarded
    Press(screen.SSPanel2.Code, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(screen.SSPanel1.Tag, "16/06/2008");

    PickDay(screen, Q_Date_2::AcceptDay);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
    EXPECT_EQ(screen.SSPanel1.Tag, "17/06/2008");
    EXPECT_EQ(screen.RCP[J_CAISSE::OpeningBalance].text(), "  9.00");
    EXPECT_EQ(practice.Stored("Actes", act, "montant").Double(), 9);
    for (const char* day : {"16/06/2008", "15/06/2008"}) {
        Press(*screen.focusWidget(), Qt::Key_Left, Qt::AltModifier);
        EXPECT_EQ(screen.SSPanel1.Tag, day);
    }
    Press(*screen.focusWidget(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(tests::ColumnOf(screen.Grid3, J_CAISSE::Amount), QStringList("9"));
    PickDay(screen, Q_Date_2::AcceptDay);
    Correct(screen); // nothing pending
    DoubleClick(screen.Grid3, 0);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
}

TEST_F(CashStatement, ListsAgainWhenTheActInHandWasDeleted)
{
    practice.Act({.day = "16/06/2008"});
    dao::Key acts[3];
    for (dao::Key& act : acts)
        act = practice.Act({.montant = 1, .flag_R = PaymentCode::RMinus});
    auto& screen = ShowDay();
    const auto expectGone = [this] { ExpectRefusal("Cet acte n'existe plus : il a été supprimé entre-temps."); };
    Correct(screen, 2);
    practice.Remove("Actes", acts[2]);
    expectGone();
    Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    EXPECT_EQ(screen.Grid3.Rows(), 2); // the current acts of the day
    practice.Remove("Actes", acts[1]);
    expectGone();
    Correct(screen, 1);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSTab1.isEnabled());
}

TEST_F(CashStatement, KeepsACorrectionAndShowsNewActsWhenFedMeanwhile)
{
    const auto feed = [this](const QString& source) {
        return QProcess::execute(PRACTICE_COMMAND,
                                 {"feed", practice.Folder(), QDir(OLD_DATABASES).absoluteFilePath(source)});
    };
    ASSERT_EQ(feed("usual.mdb"), 0);
    auto& screen = ShowDay("20/11/2026");
    const QStringList codes = tests::ColumnOf(screen.Grid3, J_CAISSE::Code);
    const auto act = static_cast<int>(codes.indexOf("NP"));
    ASSERT_GE(act, 0);
    Correct(screen, act);
    screen.SSPanel2.Code.SetListIndex(PaymentCode::P);
    Type(screen.SSPanel2.Amount, "777");

    ASSERT_EQ(feed("next-day.mdb"), 0);
    ExpectSaved("Correction enregistrée");
    Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    host::FixToday(QDate(2026, 11, 21));
    desk.WhenModal<Q_Date_2>([](Q_Date_2& picker) { Click(picker.Image2[Q_Date_2::AcceptDay]); });
    Press(screen, Qt::Key_F4);

    EXPECT_EQ(screen.Grid3.Rows(), 40);
    EXPECT_EQ(practice.Ask("select count(num) as S1 from Actes where montant = 777").Long(), 1);
    EXPECT_EQ(feed("next-day.mdb"), 0);
    EXPECT_EQ(practice.Ask("select count(num) as S1 from Actes where montant = 777").Long(), 1);

    tests::WriteFile(practice.File("Patients.csv"), "num;nom\n900;Nouveau\n");
    ASSERT_EQ(feed(practice.File("Patients.csv")), 0);
    practice.Act({.day = "21/11/2026", .num_patient = 900});
    auto& reopened = desk.Open<J_CAISSE>(); // on the day that is picked
    EXPECT_EQ(tests::ColumnOf(reopened.Grid3, cash::ActColumn::LastName).last(), "Nouveau");
}

TEST_F(CashStatement, SpeaksBothLanguagesAndNamesEveryControl)
{
    auto& screen = ShowDay();
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
