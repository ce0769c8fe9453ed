#include "acts/F_Sppr.h"
#include "acts/New_Act.h"
#include "acts/New_Rech.h"
#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "cash/F_Inst.h"
#include "cash/J_CAISSE.h"
#include "planning/Planning.h"
#include "support/ScreenTest.h"

using core::PeriodChooser;

namespace {

/// Fills a screen, and tells the error that this raises.
template <class Screen>
std::optional<Error> ErrorOfFill(const std::function<void(Screen&)>& fill = [](Screen&) {})
{
    return ErrorOf([&] {
        Screen screen;
        screen.Load();
        fill(screen);
    });
}

template <class Screen>
std::optional<Error> ErrorOfDay()
{
    return ErrorOfFill<Screen>([](Screen& screen) { screen.Image2_Click(PeriodChooser::AcceptDay); });
}

} // namespace

TEST(Counters, EndAtSixteenBits)
{
    tests::Practice practice;
    ScriptedDesk desk;
    practice.Open();
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    const auto add = [&](int rows) {
        const QString from =
            QString(" with recursive n(i) as (select 1 union all select i + 1 from n where i < %1) ").arg(rows);
        for (const char* insert :
             {"insert into Actes (Date, MM, AA, HH, num_patient, num_presta, montant, flag_R, Flag_H) %1"
              "select '2008-06-17', 6, 2008, 3, 1, 1 + i % 2, 1, 0, 1 from n",
              "insert into Plani (date, Num_Presta, HH) %1 select '2008-06-17', 1 + i % 2, 3 from n",
              "insert into Actes_suppr (Date_Suppr) %1 select '2008-06-17' from n",
              "insert into Patients (nom) %1 select 'Wahab' from n"})
            EXPECT_EQ(other.Run(QString(insert).arg(from).toUtf8().constData()), SQLITE_OK) << insert;
    };
    core::PickedDate = "17/06/2008";
    int rows = 0;
    for (const auto& [more, expected] :
         {std::pair(32767, std::optional<Error>()), std::pair(1, std::optional(Error::Overflow))}) {
        add(more);
        rows += more;
        EXPECT_EQ(ErrorOfFill<acts::New_Act>(), expected) << rows;
        EXPECT_EQ(ErrorOfFill<acts::F_Sppr>(), expected) << rows;
        EXPECT_EQ(ErrorOfFill<acts::New_Rech>([](acts::New_Rech& search) {
                      search.Text2[acts::New_Rech::LastName].setText("W");
                      search.Image2_Click(acts::New_Rech::FindNames);
                  }),
                  expected)
            << rows;
        EXPECT_EQ(ErrorOfFill<analysis::Mens_Act>(), expected) << rows;
        EXPECT_EQ(ErrorOfDay<analysis::Result>(), expected) << rows;
        EXPECT_EQ(ErrorOfFill<planning::Planning>(), expected) << rows;
        EXPECT_EQ(ErrorOfFill<cash::J_CAISSE>(), expected) << rows;
        EXPECT_EQ(ErrorOfDay<cash::F_Inst>(), expected) << rows;
    }
}
