#include "cash/Recettes.h"

#include "support/ScreenTest.h"

#include <QGuiApplication>

using cash::Recettes;
using core::PeriodChooser;
using tests::AcceptDay;
using tests::AcceptPeriod;
using tests::RowOf;

namespace PaymentCode = data::PaymentCode;

namespace {

/// The column of a payment state in the table of codes.
int CountOf(int state)
{
    return Recettes::FirstCount + state;
}

constexpr int MostRows = 16352;

class ActivityJournal : public tests::ScreenTest<Recettes> {
protected:
    ActivityJournal()
    {
        practice.Add("Tarif", {{"C", 100}, {"K0", 10}, {"K1", 20}, {"K12", 500}, {"K29", 32767}, {"K30", -5}});
        practice.Act({.day = "01/01/1999"});
    }

    static bool IsReading(Recettes& screen)
    {
        const bool reading = !screen.Dates.isVisible();
        EXPECT_EQ(screen.SSTab1.isEnabled(), reading);
        EXPECT_EQ(screen.Image1[Recettes::OtherDates].isVisible(), reading);
        EXPECT_TRUE(screen.Image1[Recettes::Quit].isVisible());
        return reading;
    }
    static bool PointerWaits() { return QGuiApplication::overrideCursor() != nullptr; }

    static QStringList Totals(Recettes& screen)
    {
        return {screen.ActsTotal.text(), screen.ReceivedTotal.text(), screen.TheoreticalTotal.text(),
                screen.DetailReceivedTotal.text(), screen.DetailTheoreticalTotal.text()};
    }
};

} // namespace

TEST_F(ActivityJournal, OpensEmptyWithItsTotalsUnderTheirColumns)
{
    practice.Act({});
    auto& screen = OpenScreen();
    EXPECT_FALSE(IsReading(screen));
    EXPECT_EQ(tests::TextsOf(screen.Dates.Text1), QStringList(3, "17/06/2008"));
    EXPECT_TRUE(screen.Dates.Text1[PeriodChooser::Day].hasFocus());
    EXPECT_EQ(screen.SSPanel2.Caption() + screen.SSPanel1.Caption(), "Journal d'activité de la");
    EXPECT_EQ(screen.SSTab1.currentIndex(), Recettes::RecapTab);
    EXPECT_EQ(screen.Grid1.Rows() + screen.Grid2.Rows(), 2);
    ASSERT_EQ(screen.Grid3.Rows(), 32);
    EXPECT_EQ(RowOf(screen.Grid3, 0), QStringList({"C", "", "", "", "", "", "", ""}));
    EXPECT_EQ(tests::ColumnOf(screen.Grid3, Recettes::Code).mid(30), QStringList({"K29", "K30"}));
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());

    const auto isUnder = [&](forms::FigureLabel& total, const forms::Grid& grid, int column) {
        screen.SSTab1.setCurrentIndex(&grid == &screen.Grid1   ? Recettes::RecapTab
                                      : &grid == &screen.Grid3 ? Recettes::CodesTab
                                                               : Recettes::DetailTab);
        support::ProcessEvents();
        return tests::IsUnder(total, grid, column);
    };
    EXPECT_TRUE(isUnder(screen.ActsTotal, screen.Grid1, Recettes::Count));
    EXPECT_TRUE(isUnder(screen.ReceivedTotal, screen.Grid1, Recettes::Received));
    EXPECT_TRUE(isUnder(screen.TheoreticalTotal, screen.Grid1, Recettes::Theoretical));
    for (int state = 0; state < screen.LT.Size(); ++state)
        EXPECT_TRUE(isUnder(screen.LT[state], screen.Grid3, CountOf(state))) << state;
    EXPECT_TRUE(isUnder(screen.DetailReceivedTotal, screen.Grid2, Recettes::Amount));
    EXPECT_TRUE(isUnder(screen.DetailTheoreticalTotal, screen.Grid2, Recettes::Value));
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
    AcceptDay(screen.Dates, "17/06/2008");

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
    EXPECT_EQ(tests::TextsOf(screen.LT), QStringList({"1", "4", "11", "1", "1", "1", "19"}));
}

TEST_F(ActivityJournal, CarriesTheLastCodeOverServicesAndFills)
{
    practice.Act({.day = "16/06/2008", .flag_R = PaymentCode::P, .Type = "K12"});
    practice.Act({.day = "16/06/2008", .flag_R = PaymentCode::P, .num_presta = 2, .Type = dao::Value()});
    practice.Act({.flag_R = PaymentCode::P, .Type = dao::Value()});
    auto& screen = OpenScreen();
    const auto values = [&](const QString& day) {
        AcceptDay(screen.Dates, day);
        return tests::ColumnOf(screen.Grid2, Recettes::Value);
    };
    EXPECT_EQ(values("17/06/2008"), QStringList("100"));
    EXPECT_EQ(values("16/06/2008"), QStringList({"500", "500"}));
    EXPECT_EQ(values("17/06/2008"), QStringList("500"));
    EXPECT_EQ(screen.Grid3.Text(13, CountOf(PaymentCode::P)), "1");
    EXPECT_EQ(screen.Grid3.Text(0, CountOf(PaymentCode::P)), "");
}

TEST_F(ActivityJournal, EndsTheProgramOnUnknownValues)
{
    auto& screen = OpenScreen();
    const std::pair<tests::ActRow, std::optional<Error>> acts[] = {
        {{.flag_R = -1}, Error::IndexOutOfRange},
        {{.flag_R = 6}, Error::IndexOutOfRange},
        {{.HH = -1}, Error::IndexOutOfRange},
        {{.HH = 10}, Error::IndexOutOfRange},
        {{.flag_R = dao::Value()}, Error::InvalidNull},
        {{.HH = dao::Value()}, Error::InvalidNull},
        {{.montant = dao::Value()}, Error::InvalidNull},
        // A code past "K30" has no rate: an error if a rate is needed or it can't be counted.
        {{.flag_R = PaymentCode::P, .Type = "K31"}, Error::IndexOutOfRange},
        {{.flag_R = PaymentCode::RMinus, .Type = "K-2"}, Error::IndexOutOfRange},
        {{.flag_R = PaymentCode::NP, .Type = "K32"}, std::nullopt},
        {{.flag_R = PaymentCode::NP, .Type = "K33"}, Error::IndexOutOfRange},
        {{.flag_R = PaymentCode::Gr, .Type = "K32767"}, Error::Overflow},
    };
    for (const auto& [act, error] : acts) {
        const dao::Key key = practice.Act(act);
        EXPECT_EQ(ErrorOf([&] { screen.Image2_Click(PeriodChooser::AcceptDay); }), error) << key;
        practice.Remove("Actes", key);
    }

    practice.Act({.flag_R = PaymentCode::NP, .Type = "K31"}); // only counts in the total of its payment state
    AcceptDay(screen.Dates, "17/06/2008");
    EXPECT_EQ(tests::TextsOf(screen.LT), QStringList({"1", "", "", "", "", "", ""}));
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
    AcceptPeriod(screen.Dates, "15/06/2008", "17/06/2008");

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
    EXPECT_EQ(tests::TextsOf(screen.LT), QStringList({"", "1", "", "1", "1", "", "3"}));
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);
    EXPECT_EQ(tests::HighlightedRow(screen.Grid3), 0);
}

TEST_F(ActivityJournal, ShowsWideAmountsUncutAndOnlyPositiveOnes)
{
    practice.Act({.montant = 123456789.5, .flag_R = PaymentCode::RPlus});
    practice.Act({.day = "16/06/2008", .montant = -123456789.5, .flag_R = PaymentCode::RPlus});
    auto& screen = OpenScreen();
    AcceptDay(screen.Dates, "17/06/2008");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "1", "123456789.5 ", "123456789.5"}));
    EXPECT_EQ(Totals(screen), QStringList({"1", "123 456 790 ", "123 456 790 ", "123456 790 ", "123456 790 "}));

    AcceptDay(screen.Dates, "16/06/2008");
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
    AcceptDay(screen.Dates, "16/06/2008");
    Click(screen.Grid1, 1);

    AcceptDay(screen.Dates, "17/06/2008");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "1", "5 ", "15"}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" ECG", "1", "6 ", ""}));
    ASSERT_EQ(screen.Grid2.Rows(), 2);
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::Value), " 7 ");
    EXPECT_EQ(screen.Grid2.Text(1, Recettes::Value), "");
    EXPECT_EQ(Totals(screen), QStringList({"2", "  11 ", "", " 11 ", ""}));
    EXPECT_EQ(screen.Grid3.Text(0, CountOf(PaymentCode::RPlus)), ""); // the codes are counted from zero
    EXPECT_EQ(screen.Grid1.Row(), 0);

    AcceptPeriod(screen.Dates, "01/01/2008", "02/01/2008");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Consultation", "", "", "15"}));
    EXPECT_EQ(RowOf(screen.Grid2, 0), QStringList({"", "", "", "", "", "", "", "", "", " 7 "}));
    EXPECT_EQ(screen.Grid2.Rows(), 1);

    AcceptDay(screen.Dates, "16/06/2008");
    EXPECT_EQ(screen.Grid2.Rows(), 3);
    EXPECT_EQ(screen.Grid2.Text(2, Recettes::Value), " 9 ");
    EXPECT_EQ(Totals(screen), QStringList({"3", "  24 ", "  24 ", " 24 ", " 24 "}));
}

TEST_F(ActivityJournal, RefusesADayWithoutActsButAcceptsSuchAPeriod)
{
    practice.Act({.montant = 5, .flag_R = PaymentCode::P});
    auto& screen = OpenScreen();
    AcceptDay(screen.Dates, "17/06/2008");
    ExpectRefusal("Aucune activité pour cette période", "ZEP Lumo");
    AcceptDay(screen.Dates, "16/06/2008");
    EXPECT_FALSE(IsReading(screen));
    EXPECT_FALSE(PointerWaits());
    EXPECT_EQ(screen.Grid2.Text(0, Recettes::ActUnit), " Consultation");
    EXPECT_EQ(screen.ActsTotal.text(), "1");

    for (const char* last : {"16/06/2008", "15/06/2008"}) { // one day before is the empty period
        AcceptPeriod(screen.Dates, "16/06/2008", last);
        EXPECT_TRUE(IsReading(screen));
        EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" ECG", "", "", ""}));
        EXPECT_EQ(screen.Grid2.Text(0, Recettes::ActUnit), "");
        EXPECT_EQ(Totals(screen) + tests::TextsOf(screen.LT), QStringList(12, ""));
        EXPECT_EQ(RowOf(screen.Grid3, 0), QStringList({"C", "", "", "", "", "", "", ""}));
    }
    ExpectRefusal("Dates inversées", "ZEP Lumo");
    AcceptPeriod(screen.Dates, "17/06/2008", "15/06/2008");
    EXPECT_TRUE(PointerWaits()); // until the next fill
    EXPECT_FALSE(IsReading(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Période du  Mar  17/06/2008 au Dim  15/06/2008");
    Click(screen.Image1[Recettes::Quit]);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_FALSE(PointerWaits());
}

TEST_F(ActivityJournal, MovesInTheTableOfItsPage)
{
    practice.Act({.montant = 5});
    practice.Act({.montant = 6, .num_presta = 2});
    auto& screen = OpenScreen();
    Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Return);
    EXPECT_TRUE(IsReading(screen));
    const struct {
        forms::Grid& grid;
        int cancel;
    } pages[] = {{screen.Grid1, PeriodChooser::CancelDay},
                 {screen.Grid3, PeriodChooser::CancelPeriod},
                 {screen.Grid2, PeriodChooser::CancelDay}};
    for (const auto& page : pages) {
        tests::ChooseDates(screen.Dates);
        EXPECT_FALSE(IsReading(screen));
        screen.Dates.SSTab2.setCurrentIndex(page.cancel == PeriodChooser::CancelPeriod);
        Click(screen.Dates.Image2[page.cancel]);
        EXPECT_TRUE(IsReading(screen));
        ASSERT_TRUE(page.grid.hasFocus());
        Press(page.grid, Qt::Key_Down);
        EXPECT_EQ(page.grid.Row(), 1);
        EXPECT_EQ(tests::HighlightedRow(page.grid), 1);
        Click(page.grid, 0);
        EXPECT_EQ(tests::HighlightedRow(page.grid), 0);
        Press(page.grid, Qt::Key_PageDown, Qt::ControlModifier);
    }
    tests::ChooseDates(screen.Dates);
    Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Escape);
    EXPECT_TRUE(IsReading(screen));
    Press(*screen.focusWidget(), Qt::Key_Escape);
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
    auto& screen = OpenScreen();
    /// Fills with the services in an order.
    const auto fill = [&](const std::vector<dao::Key>& services, const QString& last, int refusals) {
        for (std::size_t place = 0; place < services.size(); ++place)
            practice.Write(QString("Update Presta set Ordre = %1 where num = %2").arg(place).arg(services[place]));
        for (int refusal = 0; refusal < refusals; ++refusal)
            ExpectRefusal("Plage de dates trop grande ! ! !");
        AcceptPeriod(screen.Dates, "10/06/2008", last);
        desk.Verify();
        return screen.Grid2.Rows();
    };
    EXPECT_EQ(fill({1, full, 2}, "10/06/2008", 0), MostRows); // exactly the limit
    EXPECT_EQ(screen.Grid2.Text(MostRows - 1, Recettes::Value), " 100 ");
    EXPECT_EQ(screen.LT[6].text(), "16352");

    EXPECT_EQ(fill({1, full, 2}, "11/06/2008", 1), MostRows); // the last service has one too many
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({" ECG", "1", "2 ", ""}));
    EXPECT_EQ(Totals(screen), QStringList({"16353", " 163 513 ", "1 635 101 ", "163 511 ", "1635 101 "}));
    EXPECT_EQ(fill({1, 2, full}, "11/06/2008", 1), 2);
    EXPECT_EQ(fill({1, full, 2}, "12/06/2008", 1), 2); // in the middle: the services after it are listed
    EXPECT_EQ(screen.Grid2.Text(1, Recettes::ActUnit), " ECG");
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Labo", "16353", "163530 ", ""}));
    EXPECT_EQ(Totals(screen), QStringList({"16355", " 163 533 ", "  3 ", " 3 ", " 3 "}));
    EXPECT_EQ(tests::TextsOf(screen.LT), QStringList({"", "", "", "2", "", "", "2"}));
    EXPECT_EQ(fill({full, 1, 2}, "12/06/2008", 1), 2);
    EXPECT_EQ(fill({full, 1, 2}, "11/06/2008", 1), MostRows);
}
