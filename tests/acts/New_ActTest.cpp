#include "acts/New_Act.h"

#include "acts/New_Mecano.h"
#include "core/Q_Date_2.h"
#include "support/ScreenTest.h"

using acts::New_Act;
using acts::New_Mecano;
using forms::Answer;
using forms::Icon;
using tests::RowOf;
using tests::TextsOf;

namespace PaymentCode = data::PaymentCode;

namespace {

class DaySheet : public tests::ScreenTest<New_Act> {
protected:
    void ExpectEmptyDay(const QString& day) { ExpectRefusal("Aucune activité enregistrée le " + day, "Lumo_ZEP"); }

    /// The marks "Réc." and "Arch." of an act.
    static QStringList Status(New_Act& sheet, int row) { return RowOf(sheet.Grid2, row).mid(New_Act::IsRecent); }

    int ArchiveStatus(dao::Key act) { return practice.Stored("Actes", act, "Flag_H").Long(); }
};

} // namespace

TEST_F(DaySheet, ListsEveryServiceInItsOrderAndTheActsByKey)
{
    practice.Service("Pansement", -1); // first in the lists, last by key
    practice.Patient(" Haddad ", dao::Value());
    practice.Act({.day = "16/06/2008"});
    practice.Act({.num_presta = 3, .HH = 9, .Type = "K12", .Flag_H = 1});
    practice.Act({.flag_R = PaymentCode::RPlus, .num_presta = 1, .HH = 4});
    practice.Act({.flag_R = PaymentCode::P, .num_patient = 2, .num_presta = 1, .Flag_H = 1});
    practice.Act({.day = "18/06/2008"});

    auto& sheet = OpenScreen();

    ASSERT_EQ(sheet.Grid1.Rows(), 3);
    EXPECT_EQ(RowOf(sheet.Grid1, 0), QStringList({" Pansement", "", " 1", " 1"}));
    EXPECT_EQ(RowOf(sheet.Grid1, 1), QStringList({" Consultation", " 1", " 1", " 2"}));
    EXPECT_EQ(RowOf(sheet.Grid1, 2), QStringList({" ECG", "", "", ""}));
    EXPECT_EQ(TextsOf(sheet.Label4), QStringList({" 1", " 2", " 3"}));
    ASSERT_EQ(sheet.Grid2.Rows(), 3);
    EXPECT_EQ(RowOf(sheet.Grid2, 0),
              QStringList({" Pansement", " Benali Zoé", "17/06/2008", " 17-18", "K12", "NP", "", "OUI"}));
    EXPECT_EQ(RowOf(sheet.Grid2, 1),
              QStringList({" Consultation", " Benali Zoé", "17/06/2008", " 12-13", "C", "R+", "OUI", ""}));
    EXPECT_EQ(RowOf(sheet.Grid2, 2),
              QStringList({" Consultation", " Haddad ", "17/06/2008", " 8-9", "C", "P ", "", "OUI"}));
    EXPECT_EQ(TextsOf(sheet.LT), QStringList({" 1", " 2", " 3"}));
    EXPECT_EQ(sheet.windowTitle(), " ");
    EXPECT_EQ(AccessibilityFaults(sheet), QStringList());
    for (forms::Grid* grid : {&sheet.Grid1, &sheet.Grid2})
        EXPECT_EQ(tests::HighlightedRow(*grid), 0);
    for (int sum = New_Act::RecentSum; sum <= New_Act::WholeSum; ++sum)
        EXPECT_TRUE(tests::IsUnder(sheet.Label4[sum], sheet.Grid1, sum - New_Act::RecentSum + New_Act::Recent)) << sum;
    EXPECT_TRUE(tests::IsUnder(sheet.LT[New_Act::WholeSum], sheet.Grid2, New_Act::Hour));
    EXPECT_TRUE(tests::IsUnder(sheet.LT[New_Act::RecentSum], sheet.Grid2, New_Act::IsRecent));
    EXPECT_TRUE(tests::IsUnder(sheet.LT[New_Act::ArchivedSum], sheet.Grid2, New_Act::IsArchived));
    const int wordless = sheet.Image1[New_Act::DayBefore].sizeHint().width();
    for (const int worded : {New_Act::Toggle, New_Act::PickDay}) // "Acte", "Date"
        EXPECT_GT(sheet.Image1[worded].sizeHint().width(), wordless);
}

TEST_F(DaySheet, ListsActsOfUnknownPatientsOrCodesAndTreatsEveryStatusButOneAsRecent)
{
    const dao::Key two = practice.Act({.flag_R = 6, .num_patient = 77, .HH = 10, .Type = dao::Value(), .Flag_H = 2});
    const dao::Key minusOne = practice.Act({.flag_R = -1, .HH = dao::Value(), .Flag_H = -1});
    const dao::Key archived = practice.Act({.Flag_H = 1});
    practice.Act({.num_presta = 99}); // its service was deleted, so it isn't on the sheet
    auto& sheet = OpenScreen();
    EXPECT_EQ(RowOf(sheet.Grid2, 0), QStringList({" Consultation", "", "17/06/2008", "", "", "", "OUI", ""}));
    EXPECT_EQ(RowOf(sheet.Grid2, 1),
              QStringList({" Consultation", " Benali Zoé", "17/06/2008", "", "C", "", "OUI", ""}));
    EXPECT_EQ(TextsOf(sheet.LT), QStringList({" 2", " 1", " 3"}));
    EXPECT_EQ(TextsOf(sheet.Label4), QStringList({"", " 3", " 3"})); // services only count status 0

    Press(sheet.Grid2, Qt::Key_Return); // toggled twice: the whole day is written anyway
    Press(sheet.Grid2, Qt::Key_Return);
    Click(sheet.Image1[New_Act::LeaveSheet]);

    EXPECT_FALSE(sheet.isVisible());
    EXPECT_EQ(ArchiveStatus(two), 0);
    EXPECT_EQ(ArchiveStatus(minusOne), 0);
    EXPECT_EQ(ArchiveStatus(archived), 1);
}

TEST_F(DaySheet, TogglesOnTheScreenUntilTheDayIsLeft)
{
    const dao::Key first = practice.Act({});
    const dao::Key second = practice.Act({.Flag_H = 1});
    practice.Act({.day = "16/06/2008"});
    auto& sheet = OpenScreen();

    DoubleClick(sheet.Grid2, 0);
    DoubleClick(sheet.Grid2, 1);
    Click(sheet.Image1[New_Act::Toggle]);
    EXPECT_EQ(Status(sheet, 0), QStringList({"", "OUI"}));
    EXPECT_EQ(Status(sheet, 1), QStringList({"", "OUI"}));
    EXPECT_EQ(TextsOf(sheet.LT), QStringList({"", " 2", " 2"}));
    EXPECT_EQ(TextsOf(sheet.Label4), QStringList({" 1", " 1", " 2"})); // as last filled
    EXPECT_EQ(ArchiveStatus(first), 0);

    Press(sheet, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(sheet.DayLabel.text(), "16/06/2008");
    EXPECT_EQ(ArchiveStatus(first), 1);
    EXPECT_EQ(ArchiveStatus(second), 1);

    Press(sheet, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Status(sheet, 0), QStringList({"", "OUI"}));
    EXPECT_EQ(TextsOf(sheet.Label4), QStringList({"", " 2", " 2"}));
}

TEST_F(DaySheet, AsksBeforeArchivingAPartlyPaidActAndOnlyThen)
{
    const dao::Key act = practice.Act({.flag_R = PaymentCode::RMinus, .Flag_H = 2});
    auto& sheet = OpenScreen();

    desk.ExpectMessage("Confirmer archivage acte ('R-')", Icon::Question, "Attention", Answer::No);
    Press(sheet.Grid2, Qt::Key_Space);
    EXPECT_EQ(Status(sheet, 0), QStringList({"OUI", ""}));
    ExpectEmptyDay("18/06/2008");
    Click(sheet.Image1[New_Act::DayAfter]);
    EXPECT_EQ(ArchiveStatus(act), 2); // a refusal leaves nothing to save
    Click(sheet.Image1[New_Act::DayBefore]);

    desk.ExpectMessage("Confirmer archivage acte ('R-')", Icon::Question, "Attention", Answer::Yes);
    Press(sheet.Grid2, Qt::Key_Space);
    EXPECT_EQ(Status(sheet, 0), QStringList({"", "OUI"}));
    Press(sheet.Grid2, Qt::Key_Space); // restoring asks nothing
    EXPECT_EQ(Status(sheet, 0), QStringList({"OUI", ""}));
}

TEST_F(DaySheet, SavesTheToggleOfAnActAddedMeanwhileAndSkipsADeletedOne)
{
    practice.Act({.day = "16/06/2008"});
    const dao::Key deleted = practice.Act({});
    auto& sheet = OpenScreen();
    const dao::Key patient = practice.Patient("Haddad", "Ali");
    const dao::Key arrived = practice.Act({.num_patient = patient});
    Click(sheet.Image1[New_Act::DayBefore]);
    Click(sheet.Image1[New_Act::DayAfter]);
    ASSERT_EQ(sheet.Grid2.Rows(), 2);
    EXPECT_EQ(sheet.Grid2.Text(1, New_Act::Patient), " Haddad Ali");

    DoubleClick(sheet.Grid2, 1);
    practice.Remove("Actes", deleted);
    Click(sheet.Image1[New_Act::LeaveSheet]);
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_EQ(ArchiveStatus(arrived), 1);
}

TEST_F(DaySheet, SavesAToggleOnceWhenAnEmptyDayFollows)
{
    const dao::Key act = practice.Act({});
    ExpectEmptyDay("18/06/2008");
    auto& sheet = OpenScreen();
    Press(sheet.Grid2, Qt::Key_Return);
    Click(sheet.Image1[New_Act::DayAfter]);
    EXPECT_EQ(ArchiveStatus(act), 1);
    practice.Write("Update Actes set Flag_H = 0 where num = " + QString::number(act)); // by another program
    Click(sheet.Image1[New_Act::Toggle]);                                              // nothing is listed
    Click(sheet.Image1[New_Act::LeaveSheet]);
    EXPECT_EQ(ArchiveStatus(act), 0);
}

TEST_F(DaySheet, StaysOnAnEmptyDayWithNothingToToggle)
{
    practice.Act({.day = "28/02/2008"});
    ExpectEmptyDay("17/06/2008");
    auto& sheet = OpenScreen();

    EXPECT_EQ(sheet.Grid1.Rows(), 1);
    EXPECT_EQ(sheet.Grid2.Rows(), 1);
    EXPECT_EQ(TextsOf(sheet.LT), QStringList({"", "", ""}));
    Click(sheet.Image1[New_Act::Toggle]);
    DoubleClick(sheet.Grid2, 0);
    EXPECT_EQ(sheet.Grid2.Text(0, New_Act::IsArchived), "");

    sheet.DayLabel.setText("28/02/2008");
    sheet.ShowDay();
    EXPECT_EQ(TextsOf(sheet.LT), QStringList({" 1", "", " 1"}));
    ExpectEmptyDay("29/02/2008"); // a leap year, and the sheet is cleared
    Click(sheet.Image1[New_Act::DayAfter]);
    EXPECT_EQ(RowOf(sheet.Grid1, 0) + RowOf(sheet.Grid2, 0), QStringList(12, ""));
}

TEST_F(DaySheet, GoesToThePickedDay)
{
    const dao::Key act = practice.Act({});
    practice.Act({.day = "20/06/2008"});
    auto& sheet = OpenScreen();
    Press(sheet.Grid2, Qt::Key_Return);

    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) { Click(picker.Image2[core::Q_Date_2::CancelDay]); });
    Press(sheet, Qt::Key_F4);
    EXPECT_EQ(sheet.DayLabel.text(), "17/06/2008");
    EXPECT_EQ(Status(sheet, 0), QStringList({"", "OUI"}));

    desk.WhenModal<core::Q_Date_2>([](core::Q_Date_2& picker) {
        EXPECT_EQ(picker.Label2.text(), "17"); // today
        for (int day = 17; day < 20; ++day)
            Press(picker.SSCommand1[1 + day], Qt::Key_Right);
        Click(picker.Image2[core::Q_Date_2::AcceptDay]);
    });
    Click(sheet.Image1[New_Act::PickDay]);
    EXPECT_EQ(sheet.DayLabel.text(), "20/06/2008");
    EXPECT_EQ(sheet.Grid2.Text(0, New_Act::ServiceDate), "20/06/2008");
    EXPECT_EQ(ArchiveStatus(act), 1);
}

TEST_F(DaySheet, DiscardsTogglesByTheCloseBoxAndSavesTheCardDisplayOnLeaving)
{
    const dao::Key act = practice.Act({});
    auto& closed = OpenScreen();
    EXPECT_TRUE(closed.SSOption2[New_Act::FullDisplay].isChecked());
    Press(closed.Grid2, Qt::Key_Return);
    closed.SSOption2[New_Act::LimitedDisplay].setChecked(true);
    Press(closed, Qt::Key_Escape);
    EXPECT_TRUE(closed.isVisible());
    closed.close();
    EXPECT_EQ(ArchiveStatus(act), 0);
    EXPECT_TRUE(practice.Ask("select RC from Permn").IsNull());

    auto& left = desk.Open<New_Act>();
    left.SSTab1.setCurrentIndex(New_Act::DisplayPage);
    left.SSOption2[New_Act::LimitedDisplay].setChecked(true);
    Click(left.Image1[New_Act::LeaveDisplay]);
    EXPECT_EQ(practice.Ask("select RC from Permn").Text(), "OUI");

    auto& again = desk.Open<New_Act>();
    EXPECT_TRUE(again.SSOption2[New_Act::LimitedDisplay].isChecked());
    again.SSOption2[New_Act::FullDisplay].setChecked(true);
    Press(again, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(practice.Ask("select RC from Permn").Text(), "");
}

TEST_F(DaySheet, RestoresTheOptionOfTheLastRun)
{
    practice.Act({});
    practice.Open();
    const struct {
        dao::Value nbre;
        int chosen;
        const char* caption;
    } cases[] = {
        {dao::Value(), 0, "5 sur 5"},
        {0, 0, "5 sur 5"},
        {1, 1, "1 sur 2"},
        {4, 4, "1 sur 5"},
        {5, 1, "//"}, // not an option: the preset stays
        {-1, 1, "//"},
    };
    for (const auto& [nbre, chosen, caption] : cases) {
        practice.Write("Update Permn set nbre = " + (nbre.IsNull() ? "null" : nbre.Text()));
        auto& sheet = desk.Open<New_Act>();
        EXPECT_TRUE(sheet.Option1[chosen].isChecked()) << chosen << caption;
        EXPECT_EQ(sheet.OptionLabel.text(), caption);
        Press(sheet.Grid2, Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_TRUE(sheet.Option1[chosen].hasFocus());
        sheet.OptionLabel.setText("avant");
        Click(sheet.Option1[chosen]); // selected already
        EXPECT_EQ(sheet.OptionLabel.text(), sheet.Option1[chosen].text());
    }
}

TEST_F(DaySheet, KeepsOptionAndDateOfACancelledRunAndDiscardsToggles)
{
    const dao::Key act = practice.Act({.day = "12/06/2008"});
    const dao::Key toggled = practice.Act({});
    auto& sheet = OpenScreen();
    Press(sheet.Grid2, Qt::Key_Return);
    sheet.SSTab1.setCurrentIndex(New_Act::DisplayPage);
    Press(sheet.Option1[0], Qt::Key_Right);
    Press(sheet.Option1[1], Qt::Key_Right);
    EXPECT_EQ(sheet.OptionLabel.text(), "1 sur 3");

    desk.WhenModal<New_Mecano>([](New_Mecano& dialog) {
        EXPECT_EQ(dialog.VisibleShare.text(), "1 sur 3");
        EXPECT_EQ(dialog.Text1[New_Mecano::FirstDay].text(), "12/06/2008");
        dialog.Text1[New_Mecano::FirstDay].setText("01/01/2008");
        dialog.close(); // the close box is the cancel button
    });
    ExpectRefusal("Modification annulée", "Lumo ZEP");
    Click(sheet.Image2);

    EXPECT_FALSE(sheet.isVisible());
    EXPECT_EQ(ArchiveStatus(act), 0);
    EXPECT_EQ(ArchiveStatus(toggled), 0);
    EXPECT_EQ(practice.Ask("select Date from Permn").Text(), "12/06/2008"); // first use: the first act's date
    EXPECT_EQ(practice.Ask("select nbre from Permn").Long(), 2);
}

TEST_F(DaySheet, StoresTheEndOfAFinishedRun)
{
    const dao::Key kept = practice.Act({.Flag_H = 1});
    const dao::Key skipped = practice.Act({});
    auto& sheet = OpenScreen();
    sheet.SSTab1.setCurrentIndex(New_Act::DisplayPage);
    sheet.Option1[1].setChecked(true);

    desk.WhenModal<New_Mecano>([this](New_Mecano& dialog) {
        ExpectSaved("Actualisation terminée ! ! !", "Lumo_ZEP");
        ExpectSaved("Modifications enregistrées avec succès");
        Type(dialog.Text1[New_Mecano::LastDay], "20062008");
        Press(dialog.Text1[New_Mecano::LastDay], Qt::Key_Return);
    });
    Press(sheet.Image2, Qt::Key_Return);

    EXPECT_EQ(ArchiveStatus(kept), 0);
    EXPECT_EQ(ArchiveStatus(skipped), 1);
    EXPECT_EQ(practice.Ask("select Date from Permn").Text(), "20/06/2008");
    EXPECT_EQ(practice.Ask("select nbre from Permn").Long(), 1);
}

TEST_F(DaySheet, KeepsTheFocusInAnInvalidDate)
{
    practice.Act({});
    auto& sheet = OpenScreen();
    sheet.SSTab1.setCurrentIndex(New_Act::DisplayPage);
    EXPECT_EQ(sheet.Text1.text(), "17/06/2008");

    Type(sheet.Text1, "31022008");
    Press(sheet.Text1, Qt::Key_Tab);
    EXPECT_EQ(sheet.Text1.text(), "");
    EXPECT_TRUE(sheet.Text1.hasFocus());
    EXPECT_EQ(desk.BeepCount(), 1);
    Press(sheet.Text1, Qt::Key_Tab);
    EXPECT_FALSE(sheet.Text1.hasFocus());
}
