#include "acts/New_Mecano.h"

#include "core/Q_Date_2.h"
#include "core/opening.h"
#include "data/Practice.h"
#include "support/ScreenTest.h"

using acts::New_Mecano;

namespace {

class ActualisationDialog : public tests::ScreenTest<New_Mecano> {
protected:
    New_Mecano& Show(int option = 2)
    {
        practice.Open();
        core::DialogResult = option;
        core::PickedDate = "1 sur 3";
        return desk.Open<New_Mecano>();
    }

    static QStringList Period(New_Mecano& dialog) { return tests::TextsOf(dialog.Text1); }
    static void SetPeriod(New_Mecano& dialog, const QString& from, const QString& to)
    {
        dialog.Text1[New_Mecano::FirstDay].setText(from);
        dialog.Text1[New_Mecano::LastDay].setText(to);
    }

    int ArchiveStatus(dao::Key act) { return practice.Stored("Actes", act, "Flag_H").Long(); }
};

} // namespace

TEST_F(ActualisationDialog, StartsWhereTheLastRunEnded)
{
    practice.Act({.day = "12/06/2008"});
    practice.Act({.day = "03/02/2007"});
    auto& first = Show();
    EXPECT_EQ(first.windowTitle(), "   ");
    EXPECT_EQ(first.VisibleShare.text(), "1 sur 3");
    EXPECT_EQ(first.FirstActDate.text(), "03/02/2007");
    EXPECT_EQ(first.LastActDate.text(), "12/06/2008");
    EXPECT_EQ(Period(first), QStringList({"03/02/2007", "17/06/2008"}));
    Click(first.Image1[New_Mecano::Cancel]);
    EXPECT_EQ(core::DialogResult, core::ResultCancelled);
    EXPECT_EQ(core::PickedDate, "03/02/2007");

    practice.Write("Update Permn set Date = '01/06/2008'");
    auto& next = desk.Open<New_Mecano>();
    EXPECT_EQ(next.Text1[New_Mecano::FirstDay].text(), "01/06/2008");
    next.Text1[New_Mecano::FirstDay].setText("02/06/2008");
    Click(next.Image1[New_Mecano::Cancel]);
    EXPECT_EQ(core::PickedDate, "01/06/2008");
}

TEST_F(ActualisationDialog, ShowsTodayWhereThereIsNoAct)
{
    auto& dialog = Show();
    EXPECT_EQ(dialog.Text1[New_Mecano::FirstDay].text(), "17/06/2008");
    EXPECT_EQ(dialog.FirstActDate.text(), "17/06/2008");
    EXPECT_EQ(dialog.LastActDate.text(), "17/06/2008");
    ExpectSaved("Actualisation terminée ! ! !", "Lumo_ZEP");
    Click(dialog.Image1[New_Mecano::Run]);
    EXPECT_EQ(core::DialogResult, core::ResultDone);
    EXPECT_EQ(core::PickedDate, "17/06/2008");
}

TEST_F(ActualisationDialog, RefusesInvalidPeriods)
{
    const dao::Key act = practice.Act({.Flag_H = 7});
    auto& dialog = Show();
    const struct {
        const char *from, *to;
        int focused;
    } refusals[] = {
        {"", "17/06/2008", New_Mecano::FirstDay},           {"17/06/08", "17/06/2008", New_Mecano::FirstDay},
        {"17/06/2008", "17/13/2008", New_Mecano::LastDay}, // not a date, but as long as one
        {"31/04/2008", "17/06/2008", New_Mecano::FirstDay}, {"01/02/2008", "31/02/2008", New_Mecano::LastDay},
        {"01/02/2008", "00/06/2008", New_Mecano::LastDay},
    };
    for (const auto& [from, to, focused] : refusals) {
        for (const auto& accept : {std::function([&] { Press(dialog.Text1[New_Mecano::LastDay], Qt::Key_Return); }),
                                   std::function([&] { Click(dialog.Image1[New_Mecano::Run]); }),
                                   std::function([&] { Click(dialog.SSCommand2); })}) {
            dialog.Text1[New_Mecano::LastDay].setFocus();
            SetPeriod(dialog, from, to);
            ExpectRefusal("Saisie incorrecte");
            accept();
            desk.Verify();
            EXPECT_TRUE(dialog.SSPanel1.isVisible()) << from << to;
            EXPECT_TRUE(dialog.Text1[focused].hasFocus()) << from << to;
        }
        SetPeriod(dialog, from, to);
        desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) { picker.close(); });
        Click(dialog.Image2[New_Mecano::LastDay]);
        EXPECT_EQ(Period(dialog)[focused - New_Mecano::FirstDay],
                  "17/06/2008"); // today, and not a day of the next month
    }
    SetPeriod(dialog, "18/06/2008", "17/06/2008");
    ExpectRefusal("Dates inversées");
    Click(dialog.Image1[New_Mecano::Run]);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(ArchiveStatus(act), 7);
    dialog.close();
    EXPECT_EQ(core::DialogResult, core::ResultCancelled);
}

TEST_F(ActualisationDialog, MovesBetweenTheDatesByKeys)
{
    const dao::Key act = practice.Act({.Flag_H = 7});
    auto& dialog = Show(0);
    EXPECT_EQ(AccessibilityFaults(dialog), QStringList());

    Type(dialog.Text1[New_Mecano::FirstDay], "1606");
    EXPECT_EQ(dialog.Text1[New_Mecano::FirstDay].text(), "16/06/");
    Press(dialog.Text1[New_Mecano::FirstDay], Qt::Key_Backspace); // below 7 characters: cleared
    EXPECT_EQ(dialog.Text1[New_Mecano::FirstDay].text(), "");
    Type(dialog.Text1[New_Mecano::FirstDay], "16062008");
    const struct {
        int from;
        Qt::Key key;
        int to;
    } moves[] = {{New_Mecano::FirstDay, Qt::Key_Return, New_Mecano::LastDay},
                 {New_Mecano::LastDay, Qt::Key_Up, New_Mecano::FirstDay},
                 {New_Mecano::FirstDay, Qt::Key_Up, New_Mecano::FirstDay},
                 {New_Mecano::FirstDay, Qt::Key_Down, New_Mecano::LastDay},
                 {New_Mecano::LastDay, Qt::Key_Down, New_Mecano::FirstDay}};
    for (const auto& move : moves) {
        Press(dialog.Text1[move.from], move.key);
        EXPECT_TRUE(dialog.Text1[move.to].hasFocus()) << move.from << move.key;
    }

    Type(dialog.Text1[New_Mecano::LastDay], "30022008");
    Press(dialog.Text1[New_Mecano::LastDay], Qt::Key_Up);
    EXPECT_EQ(dialog.Text1[New_Mecano::LastDay].text(), "");
    Type(dialog.Text1[New_Mecano::LastDay], "17062008");
    ExpectSaved("Actualisation (Le tout visible) terminée ! ! !", "Lumo_ZEP");
    Press(dialog.Text1[New_Mecano::LastDay], Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(ArchiveStatus(act), 0);
}

TEST_F(ActualisationDialog, EstimatesTwentyTwoSecondsADay)
{
    auto& dialog = Show();
    const struct {
        const char *from, *days, *duration;
    } estimates[] = {
        {"19/06/2008", "-?-", "-?-"},
        {"18/06/2008", "-?-", " 0 mn"}, // not negative, so the duration is known
        {"17/06/2008", "1 Jour", "1 mn"},
        {"16-06/20002008", "2 Jours", "1 mn"},
        {"15/06/2008", "3 Jours", " 1 mn"},
        {"06/01/2008", "164 Jours", " 1 h 0 mn"},
        {"21/05/2004", "1489 Jours", " 9 h 5 mn"},
    };
    for (const auto& estimate : estimates) {
        SetPeriod(dialog, estimate.from, "17/06/2008");
        Click(dialog.SSCommand2);
        EXPECT_FALSE(dialog.SSPanel1.isVisible());
        EXPECT_EQ(dialog.EstimatedDays.text(), estimate.days) << estimate.from;
        EXPECT_EQ(dialog.EstimatedDuration.text(), estimate.duration) << estimate.from;
        Press(dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.SSPanel1.isVisible());
    }
    SetPeriod(dialog, "20/05/2004", "17/06/2008");
    EXPECT_EQ(ErrorOf([&] { dialog.ShowDuration(); }), Error::Overflow);
}

TEST_F(ActualisationDialog, ShowsOnePanelAtATimeAndNeverLeavesByEscape)
{
    auto& dialog = Show();
    Press(dialog.SSCommand1, Qt::Key_Return);
    EXPECT_FALSE(dialog.SSPanel1.isVisible());
    EXPECT_TRUE(dialog.SSPanel2.isVisible());
    Click(dialog.Image1[New_Mecano::CloseReminder]);
    EXPECT_TRUE(dialog.SSPanel1.isVisible());
    Click(dialog.SSCommand2);
    EXPECT_TRUE(dialog.SSPanel3.isVisible());
    EXPECT_FALSE(dialog.SSPanel2.isVisible());
    Press(dialog.Image1[New_Mecano::CloseEstimate], Qt::Key_Return);
    EXPECT_FALSE(dialog.SSPanel3.isVisible());
    Press(dialog, Qt::Key_Escape); // the day sheet would close with it and lose its toggles
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(core::DialogResult, 2);
}

TEST_F(ActualisationDialog, TakesDatesFromTheCalendar)
{
    auto& dialog = Show();
    SetPeriod(dialog, "01/06/2008", "17/06");
    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) {
        EXPECT_EQ(picker.Label2.text(), "1");
        Press(picker.SSCommand1[2], Qt::Key_Right);
        Click(picker.Image2[core::Q_Date_2::AcceptDay]);
    });
    Click(dialog.Image2[New_Mecano::FirstDay]);
    EXPECT_EQ(Period(dialog), QStringList({"02/06/2008", "17/06/2008"})); // an invalid date becomes today

    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) { Press(picker, Qt::Key_Escape); });
    Click(dialog.Image2[New_Mecano::LastDay]);
    EXPECT_EQ(dialog.Text1[New_Mecano::LastDay].text(), "17/06/2008");
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(ActualisationDialog, EndsTheProgramOrSaysNothingWhenTheFileIsLocked)
{
    const dao::Key act = practice.Act({.Flag_H = 7});
    data::PracticeRules().patience = 50;
    auto& showingAll = Show(0);
    data::PracticeRules().patience = 5000;
    const dao::Database other = core::TheWorkspace.OpenDatabase(core::DatabasePath);
    {
        const dao::Transaction lock(other);
        ExpectSaved("Actualisation (Le tout visible) terminée ! ! !", "Lumo_ZEP");
        Click(showingAll.Image1[New_Mecano::Run]);
        EXPECT_FALSE(showingAll.isVisible());
        EXPECT_EQ(core::DialogResult, core::ResultDone);

        core::DialogResult = 1;
        auto& thinning = desk.Open<New_Mecano>();
        Click(thinning.Image1[New_Mecano::Run]);
        EXPECT_EQ(desk.EndCode(), 0);
        EXPECT_EQ(core::ScratchText, core::ErrorText(basic::RuntimeError(basic::Error::Locked)));
        EXPECT_FALSE(core::TheDatabase.IsOpen());
    }
    EXPECT_EQ(ArchiveStatus(act), 7);
}
