#include "cash/Recettes.h"

#include "core/globals.h"
#include "platform/basic/RuntimeError.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/Dates.h"
#include "support/OtherProgram.h"
#include "support/Reports.h"

#include <QGuiApplication>

using cash::Recettes;
using core::PeriodChooser;
using forms::Icon;
using tests::RowOf;

namespace PaymentCode = data::PaymentCode;

namespace {

/// The column of a payment state in the table of codes.
int CountOf(int state)
{
    return Recettes::FirstCount + state;
}

constexpr int MostRows = 16352;

class ActivityJournal : public testing::Test {
protected:
    ActivityJournal()
    {
        practice.Add("Tarif", {{"C", 100}, {"K0", 10}, {"K1", 20}, {"K12", 500}, {"K29", 32767}, {"K30", -5}});
    }

    Recettes& OpenScreen()
    {
        practice.Open();
        return desk.Open<Recettes>();
    }

    static void ChooseDates(Recettes& screen)
    {
        if (!screen.Dates.isVisible())
            Click(screen.Image1[Recettes::OtherDates]);
    }
    static void ShowDay(Recettes& screen, const QString& day)
    {
        ChooseDates(screen);
        tests::AcceptDay(screen.Dates, day);
    }
    static void ShowPeriod(Recettes& screen, const QString& first, const QString& last)
    {
        ChooseDates(screen);
        tests::AcceptPeriod(screen.Dates, first, last);
    }

    static bool IsChoosing(Recettes& screen)
    {
        return screen.Dates.SSTab2.isVisible() && !screen.SSTab1.isEnabled() &&
               !screen.Image1[Recettes::OtherDates].isVisible() && screen.Image1[Recettes::Quit].isVisible();
    }
    static bool IsReading(Recettes& screen)
    {
        return !screen.Dates.SSTab2.isVisible() && screen.SSTab1.isEnabled() &&
               screen.Image1[Recettes::OtherDates].isVisible() && screen.Image1[Recettes::Quit].isVisible();
    }
    static bool PointerWaits() { return QGuiApplication::overrideCursor() != nullptr; }

    static QStringList Totals(Recettes& screen)
    {
        return {screen.ActsTotal.text(), screen.ReceivedTotal.text(), screen.TheoreticalTotal.text(),
                screen.DetailReceivedTotal.text(), screen.DetailTheoreticalTotal.text()};
    }
    static QStringList StateTotals(Recettes& screen)
    {
        QStringList totals;
        for (int state = 0; state < screen.LT.Size(); ++state)
            totals << screen.LT[state].text();
        return totals;
    }

    /// The error raised by reading today's acts including this one.
    std::optional<Error> ErrorOfDayWith(Recettes& screen, const tests::ActRow& act)
    {
        const dao::Key key = practice.Act(act);
        const auto error = ErrorOf([&] { screen.Image2_Click(PeriodChooser::AcceptDay); });
        practice.Remove("Actes", key);
        return error;
    }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(ActivityJournal, OpensOnTheChoiceOfDatesWithNothingShown)
{
    practice.Act({});
    auto& screen = OpenScreen();

    EXPECT_TRUE(IsChoosing(screen));
    for (int field = 0; field <= 2; ++field)
        EXPECT_EQ(screen.Dates.Text1[field].text(), "17/06/2008");
    EXPECT_TRUE(screen.Dates.Text1[PeriodChooser::Day].hasFocus());
    EXPECT_EQ(screen.SSPanel2.Caption(), "Journal d'activité de la");
    EXPECT_EQ(screen.SSPanel1.Caption(), "");
    EXPECT_EQ(screen.SSTab1.currentIndex(), Recettes::RecapTab);
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(screen.Grid2.Rows(), 1);
    ASSERT_EQ(screen.Grid3.Rows(), 32);
    EXPECT_EQ(RowOf(screen.Grid3, 0), QStringList({"C", "", "", "", "", "", "", ""}));
    EXPECT_EQ(screen.Grid3.Text(1, Recettes::Code), "K0");
    EXPECT_EQ(screen.Grid3.Text(31, Recettes::Code), "K30");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
}

TEST_F(ActivityJournal, ReadsTheRatesAsWholeNumbersAndMakesTheRowWhenItIsMissing)
{
    practice.Act({.flag_R = PaymentCode::P});
    practice.Act({.flag_R = PaymentCode::P, .Type = "K0"});
    const auto values = [&] {
        auto& screen = OpenScreen();
        ShowDay(screen, "17/06/2008");
        return QStringList{screen.Grid2.Text(0, Recettes::Value), screen.Grid2.Text(1, Recettes::Value)};
    };
    practice.Write("Update Tarif set C = 10.5, K0 = 11.5");
    EXPECT_EQ(values(), QStringList({" 10 ", " 12 "}));
    practice.Write("Update Tarif set C = Null, K0 = -32768");
    EXPECT_EQ(values(), QStringList({"", "-32 768 "}));
    practice.Write("delete from Tarif");
    EXPECT_EQ(values(), QStringList({"", ""}));
    EXPECT_EQ(practice.Ask("select count(*) from Tarif").Long(), 1);
    EXPECT_EQ(values(), QStringList({"", ""}));
    EXPECT_EQ(practice.Ask("select count(*) from Tarif").Long(), 1);

    practice.Write("Update Tarif set K30 = 32768");
    Recettes screen;
    EXPECT_EQ(ErrorOf([&] { screen.Load(); }), Error::Overflow);
}

TEST_F(ActivityJournal, ValuesActsByPaymentStateAndCode)
{
    const struct {
        dao::Value type;
        int state;
        double amount;
        QString value;
        int row; ///< of Grid3
    } acts[] = {
        {dao::Value(), PaymentCode::P, 0, " 100 ", 0}, // the code before the first one is "C"
        {"C", PaymentCode::P, 999, " 100 ", 0},
        {" C ", PaymentCode::RMinus, 30, " 70 ", 0},
        {"X", PaymentCode::P, 0, " 100 ", 0}, // a single character is "C" whatever it is
        {"K12", PaymentCode::RMinus, 300, " 200 ", 13},
        {dao::Value(), PaymentCode::P, 0, " 500 ", 13}, // code of the act before
        {"K12", PaymentCode::RMinus, 500, "", 13},
        {"K12", PaymentCode::RMinus, 750.4, "- 250 ", 13},
        {"K12", PaymentCode::RPlus, 650.5, " 651 ", 13},
        {"K12", PaymentCode::NP, 650, "", 13},
        {"K12", PaymentCode::Gr, 650, "", 13},
        {"K12", PaymentCode::AB, 650, "", 13},
        {"", PaymentCode::P, 0, " 10 ", 1},
        {"  ", PaymentCode::P, 0, " 10 ", 1},
        {"Kx", PaymentCode::P, 0, " 10 ", 1},
        {"K0", PaymentCode::P, 0, " 10 ", 1},
        {"K0.5", PaymentCode::P, 0, " 20 ", 2}, // 1.5 is rounded half to even
        {"K29", PaymentCode::P, 0, "32 767 ", 30},
        {" K 30 ", PaymentCode::P, 0, "- 5 ", 31},
    };
    QList<QList<int>> counts(32, QList<int>(8));
    for (const auto& act : acts) {
        practice.Act({.montant = act.amount, .flag_R = act.state, .Type = act.type});
        ++counts[act.row][act.state + 1];
        ++counts[act.row][7];
    }
    auto& screen = OpenScreen();
    ShowDay(screen, "17/06/2008");

    ASSERT_EQ(screen.Grid2.Rows(), static_cast<int>(std::size(acts)));
    for (int row = 0; row < screen.Grid2.Rows(); ++row) {
        EXPECT_EQ(screen.Grid2.Text(row, Recettes::Value), acts[row].value) << "row " << row;
        EXPECT_EQ(screen.Grid2.Text(row, Recettes::Type), acts[row].type.IsNull() ? "" : acts[row].type.Text());
    }
    for (int row = 0; row < 32; ++row)
        for (int column = 1; column <= 7; ++column)
            EXPECT_EQ(screen.Grid3.Text(row, column),
                      counts[row][column] > 0 ? QString::number(counts[row][column]) : QString())
                << "row " << row << ", column " << column;
    EXPECT_EQ(StateTotals(screen), QStringList({"1", "4", "11", "1", "1", "1", "19"}));
}

TEST_F(ActivityJournal, CarriesTheLastCodeOverServicesAndFills)
{
    practice.Act({.day = "16/06/2008", .flag_R = PaymentCode::P, .Type = "K12"});
    practice.Act({.day = "16/06/2008", .flag_R = PaymentCode::P, .num_presta = 2, .Type = dao::Value()});
    practice.Act({.day = "17/06/2008", .flag_R = PaymentCode::P, .Type = dao::Value()});
    auto& screen = OpenScreen();

    ShowDay(screen, "17/06/2008");
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::Value), " 100 ");
    ShowDay(screen, "16/06/2008");
    EXPECT_EQ(screen.Grid2.Text(1, Recettes::Value), " 500 ");
    ShowDay(screen, "17/06/2008");
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::Value), " 500 ");
    EXPECT_EQ(screen.Grid3.Text(13, CountOf(PaymentCode::P)), "1");
    EXPECT_EQ(screen.Grid3.Text(0, CountOf(PaymentCode::P)), "");
}

TEST_F(ActivityJournal, EndsTheProgramOnUnknownValues)
{
    auto& screen = OpenScreen();
    const auto errorWith = [&](const tests::ActRow& act) { return ErrorOfDayWith(screen, act); };
    for (const int state : {-1, 6, 7})
        EXPECT_EQ(errorWith({.flag_R = state}), Error::IndexOutOfRange) << state;
    for (const int hour : {-1, 10})
        EXPECT_EQ(errorWith({.HH = hour}), Error::IndexOutOfRange) << hour;
    EXPECT_EQ(errorWith({.flag_R = dao::Value()}), Error::InvalidNull);
    EXPECT_EQ(errorWith({.HH = dao::Value()}), Error::InvalidNull);
    EXPECT_EQ(errorWith({.montant = dao::Value()}), Error::InvalidNull);

    // A code past "K30" has no rate: an error if a rate is needed or it can't be counted.
    EXPECT_EQ(errorWith({.flag_R = PaymentCode::P, .Type = "K31"}), Error::IndexOutOfRange);
    EXPECT_EQ(errorWith({.flag_R = PaymentCode::RMinus, .Type = "K-2"}), Error::IndexOutOfRange);
    EXPECT_EQ(errorWith({.flag_R = PaymentCode::NP, .Type = "K32"}), std::nullopt);
    EXPECT_EQ(errorWith({.flag_R = PaymentCode::NP, .Type = "K33"}), Error::IndexOutOfRange);
    EXPECT_EQ(errorWith({.flag_R = PaymentCode::Gr, .Type = "K32767"}), Error::Overflow);

    practice.Act({.flag_R = PaymentCode::NP, .Type = "K31"}); // only counts in the total of its payment state
    ShowDay(screen, "17/06/2008");
    EXPECT_EQ(StateTotals(screen), QStringList({"1", "", "", "", "", "", ""}));
    for (int row = 0; row < screen.Grid3.Rows(); ++row)
        EXPECT_EQ(screen.Grid3.Text(row, Recettes::FirstCount), "") << row;
}

TEST_F(ActivityJournal, ShowsAPeriodByServiceByCodeAndActByAct)
{
    practice.Service("Radiologie", -1);
    practice.Patient("  Haddad ", dao::Value());
    practice.Act({.day = "16/06/2008", .montant = 300.25, .flag_R = PaymentCode::RMinus, .HH = 9, .Type = "K12"});
    practice.Act({.day = "15/06/2008", .montant = 450.5, .flag_R = PaymentCode::RPlus, .num_patient = 2});
    practice.Act({.day = "14/06/2008"});
    practice.Act({.day = "18/06/2008"});
    practice.Add("Actes", {{"Date", "17/06/2008"},
                           {"flag_R", PaymentCode::Gr},
                           {"HH", 0},
                           {"num_patient", 77},
                           {"num_presta", 3},
                           {"montant", 0}});
    practice.Act({.day = "16/06/2008", .montant = 900, .num_presta = 99}); // of a deleted service
    auto& screen = OpenScreen();
    ShowPeriod(screen, "15/06/2008", "17/06/2008");

    EXPECT_TRUE(IsReading(screen));
    EXPECT_FALSE(PointerWaits());
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Dim  15/06/2008 au Mar  17/06/2008");
    ASSERT_EQ(screen.Grid1.Rows(), 3);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Radiologie", "1", "", ""}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Consultation", "2", "750.75 ", "650.25"}));
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({" ECG", "", "", ""}));
    ASSERT_EQ(screen.Grid2.Rows(), 3);
    EXPECT_EQ(RowOf(screen.Grid2, 0),
              QStringList({" Radiologie", "17/06/2008", "", "", "", " 8-9", "", "Gr", "  ", ""}));
    EXPECT_EQ(RowOf(screen.Grid2, 1), QStringList({" Consultation", "15/06/2008", "08:30", "Haddad ", "15/06/2008",
                                                   " 8-9", "C", "R+", " 451 ", " 451 "}));
    EXPECT_EQ(RowOf(screen.Grid2, 2), QStringList({" Consultation", "16/06/2008", "08:30", "Benali Zoé", "16/06/2008",
                                                   " 17-18", "K12", "R-", " 300 ", " 200 "}));
    EXPECT_EQ(Totals(screen), QStringList({"3", "  751 ", "  650 ", " 751 ", " 650 "}));
    EXPECT_EQ(StateTotals(screen), QStringList({"", "1", "", "1", "1", "", "3"}));
    EXPECT_EQ(screen.Grid1.selectionModel()->selectedRows().value(0).row(), 0);
    EXPECT_EQ(screen.Grid3.selectionModel()->selectedRows().value(0).row(), 0);
}

TEST_F(ActivityJournal, ShowsWideAmountsUncutAndOnlyPositiveOnes)
{
    practice.Act({.montant = 123456789.5, .flag_R = PaymentCode::RPlus});
    practice.Act({.day = "16/06/2008", .montant = -123456789.5, .flag_R = PaymentCode::RPlus});
    auto& screen = OpenScreen();
    ShowDay(screen, "17/06/2008");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "1", "123456789.5 ", "123456789.5"}));
    EXPECT_EQ(Totals(screen), QStringList({"1", "123 456 790 ", "123 456 790 ", "123456 790 ", "123456 790 "}));

    ShowDay(screen, "16/06/2008");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "1", "", "-123456789.5"}));
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::Amount), "-123456 790 ");
    EXPECT_EQ(Totals(screen), QStringList({"1", "", "", "", ""}));
}

TEST_F(ActivityJournal, KeepsTheLastCellOfTheFirstRowFromThePreviousFill)
{
    practice.Act({.day = "16/06/2008", .montant = 7, .flag_R = PaymentCode::RPlus});
    practice.Act({.day = "16/06/2008", .montant = 8, .flag_R = PaymentCode::RPlus});
    practice.Act({.day = "16/06/2008", .montant = 9, .flag_R = PaymentCode::RPlus, .num_presta = 2});
    practice.Act({.montant = 5});
    practice.Act({.montant = 6, .num_presta = 2});
    auto& screen = OpenScreen();
    ShowDay(screen, "16/06/2008");
    Click(screen.Grid1, 1);

    ShowDay(screen, "17/06/2008");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "1", "5 ", "15"}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" ECG", "1", "6 ", ""}));
    ASSERT_EQ(screen.Grid2.Rows(), 2);
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::Value), " 7 ");
    EXPECT_EQ(screen.Grid2.Text(1, Recettes::Value), "");
    EXPECT_EQ(Totals(screen), QStringList({"2", "  11 ", "", " 11 ", ""}));
    EXPECT_EQ(screen.Grid3.Text(0, CountOf(PaymentCode::RPlus)),
              ""); // the codes are counted from zero
    EXPECT_EQ(screen.Grid1.Row(), 0);

    ShowPeriod(screen, "01/01/2008", "02/01/2008");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "", "", "15"}));
    EXPECT_EQ(RowOf(screen.Grid2, 0), QStringList({"", "", "", "", "", "", "", "", "", " 7 "}));

    ShowDay(screen, "16/06/2008");
    EXPECT_EQ(screen.Grid2.Rows(), 3);
    EXPECT_EQ(screen.Grid2.Text(2, Recettes::Value), " 9 ");
    EXPECT_EQ(Totals(screen), QStringList({"3", "  24 ", "  24 ", " 24 ", " 24 "}));
}

TEST_F(ActivityJournal, RefusesADayWithoutActsButAcceptsSuchAPeriod)
{
    practice.Act({.montant = 5, .flag_R = PaymentCode::P});
    auto& screen = OpenScreen();
    ShowDay(screen, "17/06/2008");

    desk.ExpectMessage("Aucune activité pour cette période", Icon::Critical, "ZEP Lumo");
    ShowDay(screen, "16/06/2008");
    EXPECT_TRUE(IsChoosing(screen));
    EXPECT_FALSE(PointerWaits());
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::ActUnit), " Consultation");
    EXPECT_EQ(screen.ActsTotal.text(), "1");

    ShowPeriod(screen, "16/06/2008", "16/06/2008");
    EXPECT_TRUE(IsReading(screen));
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(screen.Grid1.Text(0, Recettes::Count), "");
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::ActUnit), "");
    EXPECT_EQ(Totals(screen), QStringList({"", "", "", "", ""}));
    EXPECT_EQ(StateTotals(screen), QStringList({"", "", "", "", "", "", ""}));
    EXPECT_EQ(RowOf(screen.Grid3, 0), QStringList({"C", "", "", "", "", "", "", ""}));
}

TEST_F(ActivityJournal, KeepsTheHourglassOfARefusedPeriodUntilTheNextFill)
{
    practice.Act({.day = "15/06/2008"});
    auto& screen = OpenScreen();
    desk.ExpectMessage("Date incorrecte", Icon::Critical, "ATTENTION");
    ShowDay(screen, "17/06/208");
    EXPECT_FALSE(PointerWaits());
    const auto refuse = [&] {
        desk.ExpectMessage("Dates inversées", Icon::Critical, "ZEP Lumo");
        ShowPeriod(screen, "17/06/2008", "15/06/2008");
    };
    refuse();
    EXPECT_TRUE(PointerWaits());
    EXPECT_TRUE(IsChoosing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Mar  17/06/2008 au Dim  15/06/2008");
    EXPECT_EQ(screen.Grid1.Text(0, 0), "");
    refuse();
    Click(screen.Dates.Image2[PeriodChooser::CancelPeriod]);
    EXPECT_TRUE(PointerWaits());

    ShowPeriod(screen, "17/06/2008", "16/06/2008"); // one day before is the empty period
    EXPECT_FALSE(PointerWaits());
    EXPECT_TRUE(IsReading(screen));

    refuse();
    Click(screen.Image1[Recettes::Quit]);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_FALSE(PointerWaits());
}

TEST_F(ActivityJournal, KeepsTheFiguresWhenTheChoiceIsCancelled)
{
    practice.Act({.montant = 5});
    auto& screen = OpenScreen();
    Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Return);
    EXPECT_TRUE(IsReading(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Journée du Mar  17/06/2008");
    EXPECT_TRUE(screen.Grid1.hasFocus());
    Press(screen.Grid1, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(screen.SSTab1.currentIndex(), Recettes::CodesTab);
    EXPECT_TRUE(screen.Grid3.hasFocus());

    for (const int cancel : {PeriodChooser::CancelDay, PeriodChooser::CancelPeriod}) {
        ChooseDates(screen);
        screen.Dates.SSTab2.setCurrentIndex(cancel == PeriodChooser::CancelDay ? PeriodChooser::DayPage
                                                                               : PeriodChooser::PeriodPage);
        EXPECT_TRUE(IsChoosing(screen));
        Click(screen.Dates.Image2[cancel]);
        EXPECT_TRUE(IsReading(screen));
        EXPECT_TRUE(screen.Grid3.hasFocus());
    }
    Press(screen.Grid3, Qt::Key_F4);
    EXPECT_TRUE(IsChoosing(screen));
    Press(screen.Dates.Text1[PeriodChooser::First], Qt::Key_Escape);
    EXPECT_TRUE(IsReading(screen));
    Press(screen.Grid3, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::Amount), " 5 ");
}

TEST_F(ActivityJournal, LimitsTheListServiceByService)
{
    const dao::Key full = practice.Service("Labo", 0);
    const auto addFull = [&](int acts, const QString& isoDay) {
        tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
        other.Run(QString("with recursive n(i) as (select 1 union all select i + 1 from n where i < %1) insert into "
                          "Actes (Date, HH, num_patient, num_presta, montant, Type, flag_R) "
                          "select '%2', 1, 1, %3, 10, 'C', 2 from n")
                      .arg(acts)
                      .arg(isoDay)
                      .arg(full)
                      .toUtf8()
                      .constData());
    };
    addFull(MostRows - 1, "2008-06-10");
    addFull(2, "2008-06-12");
    practice.Act({.day = "10/06/2008", .montant = 1, .flag_R = PaymentCode::RPlus});
    practice.Act({.day = "11/06/2008", .montant = 2, .flag_R = PaymentCode::RPlus, .num_presta = 2});
    const auto order = [&](int consultation, int ecg, int labo) {
        for (const auto& [key, place] :
             {std::pair(dao::Key(1), consultation), std::pair(dao::Key(2), ecg), std::pair(full, labo)})
            practice.Write(QString("Update Presta set Ordre = %1 where num = %2").arg(place).arg(key));
    };
    auto& screen = OpenScreen();
    const auto show = [&](const QString& last, int messages) {
        for (int message = 0; message < messages; ++message)
            desk.ExpectMessage("Plage de dates trop grande ! ! !", Icon::Critical, "ATTENTION");
        ShowPeriod(screen, "10/06/2008", last);
        desk.Verify();
    };

    order(0, 2, 1);
    show("10/06/2008", 0); // exactly the limit
    EXPECT_EQ(screen.Grid2.Rows(), MostRows);
    EXPECT_EQ(screen.Grid2.Text(MostRows - 1, Recettes::Value), " 100 ");
    EXPECT_EQ(screen.LT[6].text(), "16352");

    show("11/06/2008", 1); // the last service has one too many
    EXPECT_EQ(screen.Grid2.Rows(), MostRows);
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({" ECG", "1", "2 ", ""}));
    EXPECT_EQ(Totals(screen), QStringList({"16353", " 163 513 ", "1 635 101 ", "163 511 ", "1635 101 "}));

    order(0, 1, 2);
    show("11/06/2008", 1);
    EXPECT_EQ(screen.Grid2.Rows(), 2);
    order(0, 2, 1); // in the middle: the services after it are listed
    show("12/06/2008", 1);
    ASSERT_EQ(screen.Grid2.Rows(), 2);
    EXPECT_EQ(screen.Grid2.Text(1, Recettes::ActUnit), " ECG");
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Labo", "16353", "163530 ", ""}));
    EXPECT_EQ(Totals(screen), QStringList({"16355", " 163 533 ", "  3 ", " 3 ", " 3 "}));
    EXPECT_EQ(screen.LT[6].text(), "2");
    EXPECT_EQ(screen.LT[2].text(), "");

    order(1, 2, 0);
    show("12/06/2008", 1);
    EXPECT_EQ(screen.Grid2.Rows(), 2);
    show("11/06/2008", 1);
    EXPECT_EQ(screen.Grid2.Rows(), MostRows);
}
