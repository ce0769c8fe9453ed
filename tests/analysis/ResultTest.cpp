#include "analysis/Result.h"
#include "platform/forms/Colours.h"
#include "support/ScreenTest.h"

using analysis::Result;
using core::PeriodChooser;
using tests::AcceptDay;
using tests::AcceptPeriod;
using tests::RowOf;

namespace PaymentCode = data::PaymentCode;

namespace {

class NetResult : public tests::ScreenTest<Result> {
protected:
    /// Sets the charges per day.
    void ChargeADay(const QString& dinars) { practice.Write("Update Permn set Charge9 = " + dinars); }

    static bool IsChoosing(Result& screen)
    {
        const bool choosing = screen.Dates.SSTab2.isVisible();
        for (int action = Result::OtherDate; action <= Result::Quit; ++action)
            EXPECT_EQ(screen.Image1[action].isVisible(), !choosing);
        return choosing;
    }

    /// Acts, amount, charges and net result as shown.
    static QStringList Figures(Result& screen)
    {
        return {screen.ActsSum.text(), screen.AmountSum.text(), screen.Charges.text(), screen.Net.text()};
    }

    static QColor InkOf(const forms::FigureLabel& figure) { return figure.palette().color(figure.foregroundRole()); }
};

} // namespace

TEST_F(NetResult, OpensOnTheChoiceOfDatesAndCanCloseFromThere)
{
    for (const int leave : {PeriodChooser::CancelDay, PeriodChooser::CancelPeriod}) {
        auto& screen = OpenScreen();
        EXPECT_TRUE(IsChoosing(screen));
        EXPECT_EQ(screen.windowTitle(), " ");
        EXPECT_EQ(screen.SSPanel1.Caption(), "");
        EXPECT_EQ(tests::TextsOf(screen.Dates.Text1), QStringList(3, "17/06/2008"));
        EXPECT_TRUE(screen.Dates.Text1[PeriodChooser::Day].hasFocus());
        EXPECT_EQ(AccessibilityFaults(screen), QStringList());
        Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Escape);
        EXPECT_TRUE(IsChoosing(screen));
        screen.Dates.SSTab2.setCurrentIndex(leave == PeriodChooser::CancelPeriod);
        Click(screen.Dates.Image2[leave]);
        EXPECT_FALSE(screen.isVisible());
    }
}

TEST_F(NetResult, SubtractsTheDailyChargesFromTheAmountsOfADay)
{
    practice.Service("Radio", -1);
    practice.Service("Soins", 5);
    practice.Act({.montant = 1000, .flag_R = PaymentCode::P});
    practice.Act({.montant = 234.5, .flag_R = PaymentCode::NP, .Flag_H = 1}); // in any state
    practice.Act({.montant = dao::Value()});
    practice.Act({.montant = -50, .num_presta = 2});
    practice.Act({.montant = dao::Value(), .num_presta = 4});
    practice.Act({.day = "16/06/2008", .montant = 7000});
    practice.Act({.day = "18/06/2008", .montant = 7000});
    ChargeADay("184.49");
    auto& screen = OpenScreen();
    ChargeADay("9999"); // doesn't affect an open screen

    Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Return);

    EXPECT_FALSE(IsChoosing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Resultat de l'activité du  17/06/2008");
    ASSERT_EQ(screen.Grid1.Rows(), 4);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Radio", "", ""}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Consultation", "3", "1234.5 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({" ECG", "1", ""})); // not above 0, but included in the sum
    EXPECT_EQ(RowOf(screen.Grid1, 3), QStringList({" Soins", "1", ""}));
    EXPECT_EQ(screen.ChargesCaption.text(), "Charges pour une journée");
    EXPECT_EQ(screen.NetCaption.text(), "Résultat Net");
    EXPECT_EQ(Figures(screen), QStringList({"5", " 1 184.50", "  184.49", " 1 000.01"}));
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(screen.Net.property("role"), "balance");
    EXPECT_TRUE(tests::IsUnder(screen.ActsSum, screen.Grid1, Result::Acts));
    EXPECT_TRUE(tests::IsUnder(screen.AmountSum, screen.Grid1, Result::Amount));
}

TEST_F(NetResult, ChargesEachDayOfAPeriodIncludingBothEnds)
{
    for (const char* day : {"31/05/2008", "01/06/2008", "30/06/2008", "01/07/2008"})
        practice.Act({.day = day, .montant = 100});
    ChargeADay("10.004");
    auto& screen = OpenScreen();
    const struct {
        const char *first, *last, *caption;
        QStringList figures;
    } rows[] = {
        {"01/06/2008", "30/06/2008", "Charges pour 30 jours", {"2", "  200.00", "  300.12", " - 100.12"}},
        {"31/05/2008", "30/06/2008", "Charges pour 31 jours", {"3", "  300.00", "  310.12", " - 10.12"}},
        {"30/06/2008", "30/06/2008", "Charges pour 1 jours", {"1", "  100.00", "  10.00", "  90.00"}},
        {"30/06/2008", "29/06/2008", "Charges pour 0 jours", {"", "", "", ""}}, // the empty period
        {"01/03/2008", "02/03/2008", "Charges pour 2 jours", {"", "", "  20.01", " - 20.01"}},
        {"28/02/2008", "01/03/2008", "Charges pour 3 jours", {"", "", "  30.01", " - 30.01"}},
    };
    for (const auto& row : rows) {
        AcceptPeriod(screen.Dates, row.first, row.last);
        EXPECT_FALSE(IsChoosing(screen));
        EXPECT_EQ(screen.SSPanel1.Caption(), QString("Resultat de l'activité du  %1 au %2").arg(row.first, row.last));
        EXPECT_EQ(screen.ChargesCaption.text(), row.caption);
        EXPECT_EQ(Figures(screen), row.figures) << row.first;
    }
}

TEST_F(NetResult, UsesTheFiguresShownAndMarksALossBySignAndColour)
{
    practice.Act({.day = "01/06/2008", .montant = 100.004});
    practice.Act({.day = "02/06/2008", .montant = 99.99});
    practice.Act({.day = "03/06/2008", .montant = 123456789.5});
    practice.Act({.day = "04/06/2008", .montant = 100.01});
    ChargeADay("99.996");
    auto& screen = OpenScreen();

    AcceptDay(screen.Dates, "01/06/2008"); // both are shown as 100.00
    EXPECT_EQ(Figures(screen), QStringList({"1", "  100.00", "  100.00", ""}));
    AcceptDay(screen.Dates, "02/06/2008");
    EXPECT_EQ(screen.Net.text(), " - .01");
    EXPECT_EQ(InkOf(screen.Net), forms::TheColours().alarm);
    AcceptDay(screen.Dates, "03/06/2008");
    EXPECT_EQ(Figures(screen), QStringList({"1", " 123456 789.50", "  100.00", " 123456 689.50"}));
    for (const auto* figure : {&screen.AmountSum, &screen.Net}) // wider than their columns, and written in full
        EXPECT_GE(figure->width(), figure->NeededWidth());
    EXPECT_EQ(InkOf(screen.Net), forms::TheColours().accent);
    AcceptDay(screen.Dates, "04/06/2008");
    EXPECT_EQ(screen.Net.text(), "  .01");

    AcceptDay(screen.Dates, "05/06/2008"); // no acts at all
    EXPECT_EQ(Figures(screen), QStringList({"", "", "  100.00", " - 100.00"}));
    EXPECT_EQ(InkOf(screen.Net), forms::TheColours().alarm);
}

TEST_F(NetResult, TreatsMissingOrNegativeChargesAsZero)
{
    practice.Act({.montant = 70});
    for (const char* change :
         {"Update Permn set Charge9 = null", "Update Permn set Charge9 = -5", "delete from Permn"}) {
        practice.Open();
        practice.Write(change); // behind the handle that was opened at the start
        auto& screen = desk.Open<Result>();
        AcceptDay(screen.Dates, "17/06/2008");
        EXPECT_EQ(Figures(screen), QStringList({"1", "  70.00", "", "  70.00"})) << change;
    }
}

TEST_F(NetResult, KeepsTheDatesAsTheyWereTypedAndReturnsToAnInvalidOne)
{
    ChargeADay("1");
    auto& screen = OpenScreen();
    AcceptPeriod(screen.Dates, "01/01/1920", "16/09/2009");
    EXPECT_EQ(screen.ChargesCaption.text(), "Charges pour 32767 jours");
    Press(screen.Grid1, Qt::Key_F4);
    EXPECT_TRUE(IsChoosing(screen));
    EXPECT_EQ(screen.Dates.SSTab2.currentIndex(), PeriodChooser::PeriodPage);
    auto& first = screen.Dates.Text1[PeriodChooser::First];
    auto& last = screen.Dates.Text1[PeriodChooser::Last];
    EXPECT_TRUE(first.hasFocus());
    EXPECT_EQ(last.text(), "16/09/2009");
    last.setText("17/09/2009"); // counted in 16 bits
    EXPECT_EQ(ErrorOf([&] { screen.Image2_Click(PeriodChooser::AcceptPeriod); }), Error::Overflow);
    EXPECT_EQ(screen.SSPanel1.Caption(), "Resultat de l'activité du  01/01/1920 au 17/09/2009");
    ExpectRefusal("Dates inversées", "ZEP Lumo");
    AcceptPeriod(screen.Dates, "17/06/2008", "15/06/2008");
    EXPECT_TRUE(IsChoosing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Resultat de l'activité du  17/06/2008 au 15/06/2008"); // the refused one

    first.setText("");
    Type(first, "31062008");
    Press(first, Qt::Key_Return); // the focus moves on and returns to the invalid day
    EXPECT_EQ(first.text(), "");
    EXPECT_TRUE(first.hasFocus());
    Type(first, "30022008");
    screen.Dates.SSTab2.setCurrentIndex(PeriodChooser::DayPage);
    EXPECT_EQ(first.text(), "");
    EXPECT_TRUE(IsChoosing(screen));
    AcceptPeriod(screen.Dates, "15/06/2008", "17/06/2008");
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(NetResult, IsReadFromAnIndexOnly)
{
    for (int day = 1; day <= 30; ++day)
        practice.Act(
            {.day = QString("%1/06/2008").arg(day, 2, 10, QChar('0')), .montant = day, .num_presta = 1 + day % 2});
    auto& screen = OpenScreen();
    AcceptPeriod(screen.Dates, "02/06/2008", "29/06/2008");
    const QStringList figures = Figures(screen);
    ASSERT_EQ(figures[0], "28");

    // Make the rows of the acts unreadable: point the table at an empty one's rows.
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    ASSERT_EQ(other.Run("pragma writable_schema = on; update sqlite_schema set rootpage = (select rootpage from "
                        "sqlite_schema where name = 'Plani') where name = 'Actes'; pragma schema_version = 4711"),
              SQLITE_OK);
    dao::Recordset rows = core::TheDatabase.OpenRecordset("select * from Actes where num = 1");
    ASSERT_EQ(rows.RecordCount(), 0);
    AcceptPeriod(screen.Dates, "02/06/2008", "29/06/2008");
    EXPECT_EQ(Figures(screen), figures);
}
