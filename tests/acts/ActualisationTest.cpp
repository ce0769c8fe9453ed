#include "acts/Actualisation.h"

#include "core/globals.h"
#include "support/Practice.h"
#include "support/Printing.h"

#include <gtest/gtest.h>
#include <map>

using acts::Actualisation;

namespace PaymentCode = data::PaymentCode;

namespace {

constexpr int UnusedStatus = 7; // marks acts that weren't written

class Actualising : public testing::Test {
protected:
    dao::Key Act(const QString& day, int service, int flag_R = PaymentCode::P)
    {
        return practice.Act({.day = day, .flag_R = flag_R, .num_presta = service, .Flag_H = UnusedStatus});
    }

    int ArchiveStatus(dao::Key act) { return practice.Stored("Actes", act, "Flag_H").Long(); }

    tests::Practice practice;
};

} // namespace

TEST_F(Actualising, KeepsEveryNthActOfADayAndService)
{
    // Groups of 1 to 7 acts in two services over seven days, entered alternately so that keys of a group don't follow
    // each other; every fourth act has the code "R-".
    struct Placed {
        int place, flag_R;
    };
    std::map<dao::Key, Placed> acts;
    for (int day = 1; day <= 7; ++day) {
        const QString date = QString("0%1/06/2008").arg(day);
        for (int place = 0; place < 7; ++place)
            for (int service = 1; service <= 2; ++service)
                if (place < (service == 1 ? day : 8 - day)) {
                    const int flag_R = acts.size() % 4 == 3 ? PaymentCode::RMinus : PaymentCode::P;
                    acts[Act(date, service, flag_R)] = {place, flag_R};
                }
    }
    const dao::Key before = Act("31/05/2008", 1), after = Act("08/06/2008", 1, 1);
    practice.Open();

    for (int skipped = 1; skipped <= 4; ++skipped)
        for (int run = 1; run <= 2; ++run) { // a second run changes nothing
            Actualisation("01/06/2008", "07/06/2008", skipped).ThinPeriod();
            for (const auto& [act, placed] : acts)
                EXPECT_EQ(ArchiveStatus(act), placed.place % (skipped + 1) == 0 || placed.flag_R == 1 ? 0 : 1)
                    << "1 sur " << skipped + 1 << ", act " << act << ", run " << run;
        }
    EXPECT_EQ(ArchiveStatus(before), UnusedStatus);
    EXPECT_EQ(ArchiveStatus(after), UnusedStatus);

    Actualisation("01/06/2008", "07/06/2008", 0).ShowAllInPeriod();
    for (const auto& [act, placed] : acts)
        EXPECT_EQ(ArchiveStatus(act), 0);
    EXPECT_EQ(ArchiveStatus(before), UnusedStatus);
    EXPECT_EQ(ArchiveStatus(after), UnusedStatus);
}

TEST_F(Actualising, ArchivesActsOfDeletedServicesUnlessPartlyPaid)
{
    const dao::Key paid = Act("17/06/2008", 99), partlyPaid = Act("17/06/2008", 99, 1);
    practice.Open();
    Actualisation("17/06/2008", "17/06/2008", 1).ThinPeriod(); // a period of one day
    EXPECT_EQ(ArchiveStatus(paid), 1);
    EXPECT_EQ(ArchiveStatus(partlyPaid), 0);
}

TEST_F(Actualising, CountsTheDaysOverTheEndOfFebruary)
{
    std::map<QString, std::pair<dao::Key, dao::Key>> days;
    for (const char* day : {"27/02/2008", "28/02/2008", "29/02/2008", "01/03/2008", "02/03/2008"})
        days[day] = {Act(day, 1), Act(day, 1)};
    practice.Open();
    Actualisation("28/02/2008", "01/03/2008", 1).ThinPeriod();
    for (const char* day : {"28/02/2008", "29/02/2008", "01/03/2008"}) {
        EXPECT_EQ(ArchiveStatus(days[day].first), 0) << day;
        EXPECT_EQ(ArchiveStatus(days[day].second), 1) << day;
    }
    EXPECT_EQ(ArchiveStatus(days["27/02/2008"].second), UnusedStatus);
    EXPECT_EQ(ArchiveStatus(days["02/03/2008"].second), UnusedStatus);
}

TEST_F(Actualising, RefusesAPeriodPastSixteenBitsBeforeTheFirstDay)
{
    const dao::Key act = Act("01/01/1900", 1);
    practice.Open();
    Actualisation run("01/01/1900", "19/09/1989", 1); // 32768 days later
    EXPECT_EQ(ErrorOf([&] { run.ThinPeriod(); }), Error::Overflow);
    EXPECT_EQ(ArchiveStatus(act), UnusedStatus);
}
