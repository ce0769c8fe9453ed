#include "core/PeriodChooser.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "platform/forms/Form.h"
#include "platform/host/Host.h"
#include "support/Cells.h"
#include "support/ScriptedDesk.h"

using core::PeriodChooser;
using forms::Icon;

namespace {

class Periods : public testing::Test {
protected:
    Periods()
    {
        host::FixToday(QDate(2008, 6, 17));
        core::FillCalendarNames();
        dates.setParent(&window);
        dates.SetToday();
        window.resize(640, 480);
        window.show();
        window.activateWindow();
        dates.ShowOver(window);
        support::ProcessEvents();
    }
    ~Periods() override { host::FixToday(QDate()); }

    /// The period that is read after these texts were set.
    std::optional<PeriodChooser::Period> Read(int accept, const QString& first, const QString& last = {})
    {
        const bool day = accept == PeriodChooser::AcceptDay;
        dates.SSTab2.setCurrentIndex(day ? PeriodChooser::DayPage : PeriodChooser::PeriodPage);
        dates.SSTab2.setFocus();
        dates.Text1[day ? PeriodChooser::Day : PeriodChooser::First].setText(first);
        dates.Text1[PeriodChooser::Last].setText(last);
        return dates.Read(accept);
    }

    ScriptedDesk desk;
    forms::Form window{"Window"};
    PeriodChooser dates;
};

} // namespace

TEST_F(Periods, AreReadWithTheirHeadingAndBounds)
{
    const struct {
        int accept;
        const char *first, *last, *heading, *bounds;
        int days;
        bool inOrder;
    } rows[] = {
        {PeriodChooser::AcceptDay, " 29/02/2008 ", "", "Journée du Ven  29/02/2008", "02/29/2008 02/29/2008", 1, true},
        {PeriodChooser::AcceptPeriod, "28-02/20002008", "01/03x/2008", "Période du  Jeu  28/02/2008 au Sam  01/03/2008",
         "02/28/2008 03/01/2008", 3, true},
        {PeriodChooser::AcceptPeriod, "17/06/2008", "17/06/2008", "Période du  Mar  17/06/2008 au Mar  17/06/2008",
         "06/17/2008 06/17/2008", 1, true},
        // One day before is the empty period.
        {PeriodChooser::AcceptPeriod, "01/01/2008", "31/12/2007", "Période du  Mar  01/01/2008 au Lun  31/12/2007",
         "01/01/2008 12/31/2007", 0, true},
        {PeriodChooser::AcceptPeriod, "17/06/2008", "15/06/2008", "Période du  Mar  17/06/2008 au Dim  15/06/2008",
         "06/17/2008 06/15/2008", -1, false},
    };
    for (const auto& row : rows) {
        const auto period = Read(row.accept, row.first, row.last);
        ASSERT_TRUE(period) << row.first;
        EXPECT_EQ(period->isDay, row.accept == PeriodChooser::AcceptDay);
        EXPECT_EQ(period->Heading(), row.heading);
        EXPECT_EQ(period->FirstUS() + ' ' + period->LastUS(), row.bounds);
        EXPECT_EQ(period->Days(), row.days);
        if (!row.inOrder)
            desk.ExpectMessage("Dates inversées", Icon::Critical, "ZEP Lumo");
        EXPECT_EQ(dates.IsInOrder(*period), row.inOrder) << row.first;
        EXPECT_EQ(dates.Text1[PeriodChooser::Last].hasFocus(), !row.inOrder);
    }
}

TEST(TypedDays, AreCutWhateverStandsBetween)
{
    const struct {
        const char *typed, *day;
    } rows[] = {
        {" 17-06-2024 ", "17/06/2024"},
        {"17/06/20002024", "17/06/2024"},
        {"17x06yz2024", "17/06/2024"},
        {"29/02/2024", "29/02/2024"},
        {"29/02/1900", "29/02/1900"},
        {"31/12/9999", "31/12/9999"},
        {"29/02/2023", ""},
        {"31/04/2024", ""},
        {"00/06/2024", ""},
        {"17/00/2024", ""},
        {"17/13/2024", ""},
        {"17/06/1899", ""},
        {"1x/06/2024", ""},
        {"17/6 /2024", ""},
        {"17/06/24", ""},
        {"17/06/20-4", ""},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(core::TypedDay(row.typed).value_or(""), row.day) << row.typed;
}

TEST_F(Periods, AreRefusedWithTheFocusInTheMissingOrInvalidDate)
{
    const struct {
        int accept;
        const char *first, *last, *reason;
        PeriodChooser::Field focused;
    } rows[] = {
        {PeriodChooser::AcceptDay, "", "", "Date incorrecte", PeriodChooser::Day},
        {PeriodChooser::AcceptDay, "17/06/208", "", "Date incorrecte", PeriodChooser::Day},
        {PeriodChooser::AcceptDay, "1x/06/2008", "", "Date incorrecte", PeriodChooser::Day},
        {PeriodChooser::AcceptPeriod, "", "17/06/2008", "Saisie incomplète", PeriodChooser::First},
        {PeriodChooser::AcceptPeriod, "", "", "Saisie incomplète", PeriodChooser::First},
        {PeriodChooser::AcceptPeriod, "17/06/2008", "17/06/20", "Saisie incomplète", PeriodChooser::Last},
        {PeriodChooser::AcceptPeriod, "1x/06/2008", "17/06/2008", "Date incorrecte", PeriodChooser::First},
        {PeriodChooser::AcceptPeriod, "17/06/2008", "1x/06/2008", "Date incorrecte", PeriodChooser::Last},
    };
    for (const auto& row : rows) {
        desk.ExpectMessage(row.reason, Icon::Critical, "ATTENTION");
        EXPECT_FALSE(Read(row.accept, row.first, row.last)) << row.first << row.last;
        EXPECT_TRUE(dates.Text1[row.focused].hasFocus()) << row.first << row.last;
    }
    dates.SSTab2.setCurrentIndex(PeriodChooser::DayPage);
    dates.Text1[PeriodChooser::Day].clear();
    Type(dates.Text1[PeriodChooser::Day], "31062008"); // validated as if the user had left it
    desk.ExpectMessage("Date incorrecte", Icon::Critical, "ATTENTION");
    const int beeps = desk.BeepCount();
    EXPECT_FALSE(dates.Read(PeriodChooser::AcceptDay));
    EXPECT_EQ(desk.BeepCount(), beeps + 1);
    EXPECT_EQ(dates.Text1[PeriodChooser::Day].text(), "");
}

TEST_F(Periods, AreAcceptedByEnterInTheLastFieldOfTheirPage)
{
    QList<int> accepted;
    for (const int accept : {PeriodChooser::AcceptDay, PeriodChooser::AcceptPeriod})
        QObject::connect(&dates.Image2[accept], &forms::Picture::clicked, &dates, [&, accept] { accepted << accept; });
    EXPECT_TRUE(dates.property("floating").toBool());
    EXPECT_EQ(tests::TextsOf(dates.Text1), QStringList(3, "17/06/2008"));
    ASSERT_TRUE(dates.Text1[PeriodChooser::Day].hasFocus());
    Press(dates.Text1[PeriodChooser::Day], Qt::Key_Return);
    EXPECT_EQ(accepted, QList<int>{PeriodChooser::AcceptDay});

    dates.SSTab2.setCurrentIndex(PeriodChooser::PeriodPage);
    dates.ShowOver(window);
    ASSERT_TRUE(dates.Text1[PeriodChooser::First].hasFocus());
    Press(dates.Text1[PeriodChooser::First], Qt::Key_Return);
    ASSERT_TRUE(dates.Text1[PeriodChooser::Last].hasFocus());
    EXPECT_EQ(accepted.size(), 1);
    Press(dates.Text1[PeriodChooser::Last], Qt::Key_Return);
    EXPECT_EQ(accepted.last(), PeriodChooser::AcceptPeriod);
}
