#include "cash/F_Inst.h"

#include "support/Reports.h"
#include "support/ScreenTest.h"

using cash::CorrectionPanel;
using cash::F_Inst;
using core::PeriodChooser;
using tests::RowOf;

namespace PaymentCode = data::PaymentCode;

namespace {

class PendingSettlements : public tests::ScreenTest<F_Inst> {
protected:
    PendingSettlements() { practice.Service("Radio", -1); }

    F_Inst& ListDay(const QString& day = "17/06/2008")
    {
        auto& screen = OpenScreen();
        tests::AcceptDay(screen.Dates, day);
        return screen;
    }

    /// Settles the current act in the opened panel.
    void Settle(F_Inst& screen, int code, const QString& amount)
    {
        screen.SSPanel2.Code.SetListIndex(code);
        screen.SSPanel2.Amount.setText(amount);
        ExpectSaved("Correction enregistrée");
        Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    }

    void ExpectActGone() { ExpectRefusal("Cet acte n'existe plus : il a été supprimé entre-temps."); }

    QString Stored(dao::Key act)
    {
        return tests::RowsOf(practice, "select flag_R, montant from Actes where num = " + QString::number(act))
            .join("");
    }

    /// What is shown: "dates" or "correction" over the list, or the "list" and its pictures.
    static QString Shown(F_Inst& screen)
    {
        const bool dates = screen.Dates.isVisible(), correction = screen.SSPanel2.isVisible();
        for (int picture = F_Inst::OtherDate; picture <= F_Inst::Quit; ++picture)
            EXPECT_EQ(screen.Image1[picture].isVisible(), picture == F_Inst::Quit || !(dates || correction));
        EXPECT_FALSE(dates && correction);
        EXPECT_EQ(screen.Grid3.isEnabled(), !correction);
        return dates ? "dates" : correction ? "correction" : "list";
    }
};

} // namespace

TEST_F(PendingSettlements, ListsTheUnpaidActsOfADayAndSumsWhatWasReceived)
{
    practice.Patient("Haddad", dao::Value());
    practice.Act({.day = "16/06/2008"});
    practice.Act({.montant = 500, .flag_R = PaymentCode::P});
    practice.Act({});
    practice.Act({.montant = 1234.5, .flag_R = PaymentCode::RMinus, .num_patient = 2, .num_presta = 3});
    practice.Add("Actes", {{"Date", "17/06/2008"},
                           {"date_Presta", "15/06/2008"},
                           {"flag_R", 0},
                           {"num_patient", 77},
                           {"num_presta", 99},
                           {"montant", dao::Value()}});
    practice.Add("Actes", {{"Date", "17/06/2008"}, {"flag_R", 0}});

    auto& screen = OpenScreen();
    EXPECT_EQ(Shown(screen), "dates");
    EXPECT_EQ(tests::TextsOf(screen.Dates.Text1), QStringList(3, "17/06/2008"));
    EXPECT_EQ(screen.SSPanel1.Caption(), "");
    EXPECT_EQ(RowOf(screen.Grid3, 0).join(""), "");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    tests::AcceptDay(screen.Dates, "17/06/2008");

    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Journée du Mar  17/06/2008");
    ASSERT_EQ(screen.Grid3.Rows(), 4);
    EXPECT_EQ(RowOf(screen.Grid3, 0),
              QStringList({"1", " Benali", " Zoé", " Consultation", "17/06/2008", "08:30", "NP", ""}));
    EXPECT_EQ(RowOf(screen.Grid3, 1),
              QStringList({"2", " Haddad", "", " Radio", "17/06/2008", "08:30", "R-", "1234.5 "}));
    EXPECT_EQ(RowOf(screen.Grid3, 2), QStringList({"3", "", "", "", "15/06/2008", "", "NP", ""}));
    EXPECT_EQ(RowOf(screen.Grid3, 3), QStringList({"4", "", "", "", "", "", "NP", ""}));
    EXPECT_EQ(screen.RCP.text(), " 1 234.50");
    EXPECT_TRUE(tests::IsUnder(screen.RCP, screen.Grid3, F_Inst::Amount));
    EXPECT_EQ(tests::HighlightedRow(screen.Grid3), 0);

    tests::AcceptDay(screen.Dates, "14/06/2008"); // nothing pending: no message, list cleared
    EXPECT_EQ(RowOf(screen.Grid3, 0).join("") + screen.RCP.text(), "");
    EXPECT_EQ(screen.Grid3.Rows(), 1);
    Click(screen.Image1[F_Inst::Correct]);
    DoubleClick(screen.Grid3, 0);
    EXPECT_EQ(Shown(screen), "list");

    practice.Act({.day = "13/06/2008", .flag_R = -1});
    screen.Dates.Text1[PeriodChooser::Day].setText("13/06/2008");
    EXPECT_EQ(ErrorOf([&] { screen.Image2_Click(PeriodChooser::AcceptDay); }), Error::IndexOutOfRange);
}

TEST_F(PendingSettlements, IncludeBothEndsOfAPeriodInTheOrderOfTheirEntry)
{
    for (const char* day : {"31/12/2007", "29/02/2008", "01/01/2008", "17/06/2008", "18/06/2008"})
        practice.Act({.day = day, .montant = -10, .flag_R = PaymentCode::RMinus});
    auto& screen = OpenScreen();
    Click(screen.Dates.Image2[PeriodChooser::CancelDay]); // before anything was listed
    EXPECT_EQ(Shown(screen), "list");

    tests::AcceptPeriod(screen.Dates, "01/01/2008", "17/06/2008");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Mar  01/01/2008 au Mar  17/06/2008");
    const QStringList listed{"29/02/2008", "01/01/2008", "17/06/2008"};
    EXPECT_EQ(tests::ColumnOf(screen.Grid3, F_Inst::Date), listed);
    EXPECT_EQ(screen.RCP.text(), "-  30.00");

    ExpectRefusal("Dates inversées", "ZEP Lumo");
    tests::AcceptPeriod(screen.Dates, "17/06/2008", "15/06/2008");
    EXPECT_EQ(Shown(screen), "dates");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Mar  17/06/2008 au Dim  15/06/2008"); // the refused one
    for (const int cancel : {PeriodChooser::CancelDay, PeriodChooser::CancelPeriod}) {
        tests::ChooseDates(screen.Dates);
        screen.Dates.SSTab2.setCurrentIndex(cancel == PeriodChooser::CancelPeriod);
        Click(screen.Dates.Image2[cancel]);
        EXPECT_EQ(tests::ColumnOf(screen.Grid3, F_Inst::Date), listed);
        EXPECT_EQ(Shown(screen), "list");
    }
    tests::ChooseDates(screen.Dates);
    Press(screen.Dates.Text1[PeriodChooser::First], Qt::Key_Escape);
    EXPECT_EQ(Shown(screen), "list");
    Press(screen.Grid3, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    Click(screen.Image1[F_Inst::Quit]);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(PendingSettlements, AreSettledByKeyboardAndStayListed)
{
    practice.Act({.day = "10/06/2008", .montant = 100.25, .flag_R = PaymentCode::RMinus});
    practice.Act({.day = "10/06/2008", .flag_R = PaymentCode::P});
    const dao::Key act = practice.Act({.day = "11/06/2008", .num_presta = 3});
    practice.Act({.day = "12/06/2008"});
    auto& screen = OpenScreen();

    Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Tab, Qt::ControlModifier);
    Type(screen.Dates.Text1[PeriodChooser::First], "01062008");
    Press(screen.Dates.Text1[PeriodChooser::First], Qt::Key_Return);
    Press(screen.Dates.Text1[PeriodChooser::Last], Qt::Key_Return);
    ASSERT_TRUE(screen.Grid3.hasFocus());
    Press(screen.Grid3, Qt::Key_Down);
    Press(screen.Grid3, Qt::Key_Return);
    ASSERT_EQ(Shown(screen), "correction");
    EXPECT_TRUE(screen.SSPanel2.property("floating").toBool());
    EXPECT_TRUE(screen.SSPanel2.Code.hasFocus());
    EXPECT_EQ(screen.SSPanel2.LastName.text() + screen.SSPanel2.FirstName.text() + screen.SSPanel2.Service.text(),
              " Benali Zoé Radio");
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "");
    Press(screen.SSPanel2.Code, Qt::Key_Down);
    Press(screen.SSPanel2.Code, Qt::Key_Down);
    Press(screen.SSPanel2.Code, Qt::Key_Return);
    EXPECT_TRUE(screen.SSPanel2.Amount.hasFocus());
    Type(screen.SSPanel2.Amount, "1234,5x");
    Press(screen.SSPanel2.Amount, Qt::Key_Return);
    ExpectSaved("Correction enregistrée");
    Press(screen.SSPanel2.Image3[CorrectionPanel::Accept], Qt::Key_Return);

    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(Stored(act), "2|1234.5");
    EXPECT_EQ(practice.Stored("Actes", act, "Date").Text(), "11/06/2008");
    ASSERT_EQ(screen.Grid3.Rows(), 3);
    EXPECT_EQ(RowOf(screen.Grid3, 1).mid(F_Inst::Code), QStringList({"P ", "1234.5 "}));
    EXPECT_EQ(screen.RCP.text(), "1334.75"); // plain until the next selection

    EXPECT_EQ(screen.Grid3.Row(), 1); // the corrected act, for arrows and Enter
    EXPECT_EQ(tests::HighlightedRow(screen.Grid3), 1);
    ASSERT_TRUE(screen.Grid3.hasFocus());
    Press(screen.Grid3, Qt::Key_Return); // opens the highlighted act again
    EXPECT_EQ(screen.SSPanel2.Amount.text(), "1234.5");
    EXPECT_EQ(screen.SSPanel2.Code.currentText(), "P ");
    screen.SSPanel2.Amount.setText("99");
    Press(screen.SSPanel2.Code, Qt::Key_Escape);
    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(Stored(act), "2|1234.5");

    tests::AcceptPeriod(screen.Dates, "01/06/2008", "17/06/2008");
    EXPECT_EQ(screen.Grid3.Rows(), 2);
    EXPECT_EQ(screen.RCP.text(), "  100.25");
}

TEST_F(PendingSettlements, AreCorrectedAsShownInThePanel)
{
    practice.Act({.montant = 7, .flag_R = PaymentCode::P});
    const dao::Key acts[] = {practice.Act({.montant = 15, .flag_R = PaymentCode::RMinus}),
                             practice.Add("Actes", {{"Date", "17/06/2008"}, {"flag_R", 0}, {"num_patient", 77}}),
                             practice.Act({.montant = 30, .flag_R = PaymentCode::RMinus})};
    auto& screen = ListDay();
    const auto correct = [&](int row, const QString& shown) {
        Click(screen.Grid3, row);
        Press(screen.Grid3, Qt::Key_F2);
        EXPECT_EQ(screen.SSPanel2.Amount.text(), shown);
        screen.Grid3.SetRow(1); // whatever row is clicked behind the panel
        screen.Grid3_Click();
    };
    correct(2, "30");
    Settle(screen, PaymentCode::P, "-123456789.5");
    EXPECT_EQ(Stored(acts[2]), "2|-123456789.5");
    EXPECT_EQ(tests::ColumnOf(screen.Grid3, F_Inst::Amount), QStringList({"15", "", "-123456789.5"}));
    EXPECT_EQ(screen.RCP.text(), "-123456774.5");

    correct(0, "15");
    Settle(screen, PaymentCode::RMinus, "");
    EXPECT_EQ(Stored(acts[0]), "1|0");
    correct(1, ""); // without patient, service and amount
    EXPECT_EQ(screen.SSPanel2.LastName.text() + screen.SSPanel2.Service.text(), "");
    Settle(screen, PaymentCode::Gr, "70");
    EXPECT_EQ(Stored(acts[1]), "4|70");
    EXPECT_EQ(tests::ColumnOf(screen.Grid3, F_Inst::Code), QStringList({"R-", "Gr", "P"}));
}

TEST_F(PendingSettlements, AreUntouchedWhenTheActInHandWasDeleted)
{
    const dao::Key first = practice.Act({.montant = 1, .flag_R = PaymentCode::RMinus});
    const dao::Key second = practice.Act({.montant = 2, .flag_R = PaymentCode::RMinus});
    auto& screen = ListDay();
    Click(screen.Grid3, 1);
    Click(screen.Image1[F_Inst::Correct]);
    practice.Remove("Actes", second);

    ExpectActGone();
    Click(screen.SSPanel2.Image3[CorrectionPanel::Accept]);
    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(screen.Grid3.Text(1, F_Inst::Amount), "2 ");
    ExpectActGone();
    Click(screen.Image1[F_Inst::Correct]);
    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(Stored(first), "1|1");
}

TEST_F(PendingSettlements, ArePrintedAsListedEvenIfNoneIs)
{
    tests::PutTemplate(practice, "ZEP_DTAL.RPT");
    practice.Act({.flag_R = PaymentCode::P});
    practice.Act({.montant = 5, .flag_R = PaymentCode::RMinus});
    practice.Act({});
    practice.Write("Update textes set ch6 = 'total', ch7 = 'total'");
    auto& screen = ListDay();
    Click(screen.Image1[F_Inst::Correct]);
    Settle(screen, PaymentCode::P, "70"); // stays listed, and so is printed

    tests::ExpectPreview(desk, "Règlements en instance Journée du Mar 17-06-2008");
    Click(screen.Image1[F_Inst::Print]);
    EXPECT_EQ(tests::RowsOf(practice, "select ch4, ch5, ch6, ch7 from textes"),
              QStringList("Règlements en instance|Journée du Mar  17/06/2008||"));
    EXPECT_EQ(tests::RowsOf(practice, "select num, unite, Page, Mt from Prov"), QStringList({"2|-|-|-", "3|-|-|-"}));

    tests::AcceptDay(screen.Dates, "14/06/2008");
    tests::ExpectPreview(desk, "Règlements en instance Journée du Sam 14-06-2008");
    Click(screen.Image1[F_Inst::Print]);
    EXPECT_EQ(tests::RowsOf(practice, "select num from Prov"), QStringList());
}
