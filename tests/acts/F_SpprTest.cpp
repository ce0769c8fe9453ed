#include "acts/F_Sppr.h"

#include "core/globals.h"
#include "core/printing.h"
#include "platform/pages/PageLayout.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/OtherProgram.h"
#include "support/Reports.h"

#include <QDir>

using acts::F_Sppr;
using forms::Answer;
using forms::Icon;
using tests::RowOf;

namespace {

constexpr auto TemplateName = "ZEP_Supp.RPT";

class DeletedActs : public testing::Test {
protected:
    dao::Key Line(const QString& removed, const tests::Practice::Row& more = {})
    {
        tests::Practice::Row row{
            {"Date", "10/06/2008"}, {"Heure", "08:30"}, {"num_patient", 1},      {"num_presta", 2},
            {"Type", "K7"},         {"flag_R", 1},      {"Date_Suppr", removed}, {"H_Suppr", QString("17:05")}};
        for (const auto& [field, value] : more)
            for (auto& [name, stored] : row)
                if (QLatin1String(name) == QLatin1String(field))
                    stored = value;
        return practice.Add("Actes_suppr", row);
    }

    F_Sppr& OpenScreen()
    {
        practice.Open();
        core::ProgramFolder = practice.Folder();
        return desk.Open<F_Sppr>();
    }

    static void ChooseDay(F_Sppr& screen, const QString& day)
    {
        if (!screen.SSPanel2.isVisible())
            Click(screen.Image1[F_Sppr::OtherDate]);
        screen.Text1.setText(day);
        Click(screen.Image2[F_Sppr::Accept]);
    }

    void Delete(F_Sppr& screen, int line)
    {
        ExpectQuestion(line, Answer::Yes);
        desk.ExpectMessage("Ligne supprimée avec succès", Icon::Information, "Lumo ZEP");
        Click(screen.Image1[F_Sppr::Remove]);
    }

    void ExpectQuestion(int line, Answer answer)
    {
        desk.ExpectMessage("Confirmer supression de ligne N°  " + QString::number(line), Icon::Question, "Confirmation",
                           answer);
    }

    QString Keys() { return tests::RowsOf(practice, "select num from Actes_suppr order by num").join(' '); }

    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt, Obs, Mt2 from Prov"); }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(DeletedActs, AreListedInTheOrderOfTheirDeletion)
{
    Line("17/06/2008", {{"flag_R", 5}});
    Line("16/06/2008", {{"num_patient", 77}, {"num_presta", 99}, {"Type", dao::Value()}, {"flag_R", 6}});
    practice.Patient("Haddad", dao::Value());
    Line("17/06/2008", {{"num_patient", 2}, {"flag_R", dao::Value()}, {"Date", dao::Value()}});
    Line("17/06/2008", {{"num_patient", dao::Value()}, {"flag_R", -1}});
    auto& screen = OpenScreen();

    EXPECT_EQ(screen.windowTitle(), "  ");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Actes supprimés");
    ASSERT_EQ(screen.Grid1.Rows(), 4);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"10/06/2008", "08:30", "", "", "", "", "", "16/06/2008", "17:05"}));
    EXPECT_EQ(RowOf(screen.Grid1, 1),
              QStringList({"10/06/2008", "08:30", " ECG", "K7", " AB", " Benali", " Zoé", "17/06/2008", "17:05"}));
    EXPECT_EQ(RowOf(screen.Grid1, 2),
              QStringList({"", "08:30", " ECG", "K7", "", " Haddad", "", "17/06/2008", "17:05"}));
    EXPECT_EQ(RowOf(screen.Grid1, 3),
              QStringList({"10/06/2008", "08:30", " ECG", "K7", "", "", "", "17/06/2008", "17:05"}));
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_FALSE(screen.Combo1.isVisible());
    EXPECT_EQ(screen.Combo1.count(), 6);
    EXPECT_EQ(screen.Combo1.currentText(), " NP");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    EXPECT_NE(screen.findChild<QLabel*>("Label3"), nullptr);
}

TEST_F(DeletedActs, AreListedForATypedDay)
{
    Line("15/06/2008");
    Line("16/06/2008");
    Line("16/06/2008");
    auto& screen = OpenScreen();

    Press(screen.Grid1, Qt::Key_F4);
    EXPECT_TRUE(screen.SSPanel2.isVisible());
    EXPECT_FALSE(screen.SSFrame1.isEnabled());
    ASSERT_TRUE(screen.Text1.hasFocus());
    Press(screen.Text1, Qt::Key_Escape);
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSFrame1.isEnabled());
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(screen.Grid1.Rows(), 3);

    Click(screen.Image1[F_Sppr::OtherDate]);
    Type(screen.Text1, "31062008"); // validated on a click, which doesn't move the focus
    desk.ExpectMessage("Date incorrecte", Icon::None, "");
    Click(screen.Image2[F_Sppr::Accept]);
    EXPECT_EQ(desk.BeepCount(), 1);
    EXPECT_TRUE(screen.Text1.hasFocus());
    desk.ExpectMessage("Aucun acte supprimé", Icon::Information, "Lumo ZEP");
    Type(screen.Text1, "14062008");
    Press(screen.Text1, Qt::Key_Return);
    EXPECT_TRUE(screen.SSPanel2.isVisible());
    EXPECT_EQ(screen.Grid1.Rows(), 3); // the list is unchanged
    EXPECT_EQ(screen.SSPanel1.Caption(), "Actes supprimés");

    ChooseDay(screen, "16/06/2008");
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSFrame1.isEnabled());
    EXPECT_EQ(screen.SSPanel1.Caption(), "Actes supprimés le 16/06/2008");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    desk.ExpectMessage("Aucun acte supprimé", Icon::Information, "Lumo ZEP");
    ChooseDay(screen, "14/06/2008");
    Click(screen.Image2[F_Sppr::Cancel]);
    EXPECT_EQ(screen.SSPanel1.Caption(), "Actes supprimés le 16/06/2008");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(DeletedActs, AreRemovedLineByLine)
{
    for (const char* day : {"16/06/2008", "17/06/2008", "17/06/2008", "17/06/2008"})
        Line(day);
    auto& screen = OpenScreen();
    ChooseDay(screen, "17/06/2008"); // the lines of a day: 2, 3, 4
    Click(screen.Grid1, 1);
    ExpectQuestion(2, Answer::No);
    Click(screen.Image1[F_Sppr::Remove]);
    EXPECT_EQ(Keys(), "1 2 3 4");

    Delete(screen, 2);
    EXPECT_EQ(Keys(), "1 2 4");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(screen.Grid1.Row(), 0);
    Delete(screen, 1); // row 0 is current again
    EXPECT_EQ(Keys(), "1 4");
    Delete(screen, 1);
    EXPECT_EQ(Keys(), "1");
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(RowOf(screen.Grid1, 0).join(""), "");
    Click(screen.Image1[F_Sppr::Remove]); // nothing left to remove or print
    Click(screen.Image1[F_Sppr::Print]);
    EXPECT_EQ(Scratch(), QStringList());
    EXPECT_EQ(Keys(), "1");
}

TEST_F(DeletedActs, AreUntouchedWhenAnotherLineWasDeleted)
{
    for (int line = 0; line < 3; ++line)
        Line("17/06/2008");
    auto& screen = OpenScreen();
    practice.Remove("Actes_suppr", 2);
    Click(screen.Grid1, 1);
    ExpectQuestion(2, Answer::Yes);
    desk.ExpectMessage("Cette ligne n'existe plus : elle a été supprimée entre-temps.", Icon::Critical, "ATTENTION");
    Click(screen.Image1[F_Sppr::Remove]);
    EXPECT_EQ(Keys(), "1 3");
    EXPECT_EQ(screen.Grid1.Rows(), 2); // the line is removed from the list anyway
    Click(screen.Grid1, 1);
    Delete(screen, 2);
    EXPECT_EQ(Keys(), "1");
}

TEST_F(DeletedActs, ArePrintedWithTheProgramsTemplate)
{
    tests::PutTemplate(practice, TemplateName);
    Line("16/06/2008");
    const QString kept = QString::number(Line("17/06/2008"));
    auto& screen = OpenScreen();
    core::TheDatabase.Execute("Update textes set ch1 = 'vieux', ch4 = 'vieux', ch5 = 'titre 5', ch10 = 'titre 10'");
    practice.Write("insert into Prov (num, unite) values (7, 'ancienne ligne')");

    core::ProgramFolder = practice.Folder() + "/ailleurs"; // the data folder isn't searched
    desk.ExpectMessage("Fichier ZEP_Supp.RPT absent", Icon::Information, "Lumo Orvane");
    Press(screen.Grid1, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(tests::RowsOf(practice, "select ch1, ch4 from textes"), QStringList("vieux|vieux"));
    EXPECT_EQ(Scratch(), QStringList("7|ancienne ligne|-|-|-|0"));

    core::ProgramFolder = practice.Folder();
    tests::ExpectPreview(desk, "Actes supprimés");
    Click(screen.Image1[F_Sppr::Print]);
    EXPECT_EQ(core::ReportName, TemplateName);
    EXPECT_EQ(tests::RowsOf(practice, "select ch1, ch2, ch3, ch30, ch4, ch5, ch10 from textes"),
              QStringList("Cabinet d'Été|Médecine générale|Alger|(021 00 00 00)|Actes supprimés|titre 5|titre 10"));
    EXPECT_EQ(Scratch(), QStringList({"1|-|-|-|-|0", "2|-|-|-|-|0"}));

    ChooseDay(screen, "17/06/2008");
    desk.WhenModal<report::PreviewWindow>([](report::PreviewWindow& preview) {
        EXPECT_EQ(preview.Pages().PageCount(), 1);
        preview.Unload();
    });
    Click(screen.Image1[F_Sppr::Print]);
    EXPECT_EQ(tests::RowsOf(practice, "select ch4 from textes"), QStringList("Actes supprimés le 17/06/2008"));
    EXPECT_EQ(Scratch(), QStringList(kept + "|-|-|-|-|0"));
}

TEST_F(DeletedActs, AreCountedInSixteenBits)
{
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    ASSERT_EQ(other.Run("with recursive n(i) as (values(1) union all select i + 1 from n where i < 32768) "
                        "insert into Actes_suppr (Date_Suppr) select iif(i = 1, '2008-06-16', '2008-06-17') from n"),
              0);
    practice.Open();
    F_Sppr screen;
    EXPECT_EQ(ErrorOf([&] { screen.Load(); }), Error::Overflow);
    screen.Text1.setText("17/06/2008");
    ASSERT_TRUE(screen.SelectDeletedDate());
    screen.FillDeletedGrid();
    EXPECT_EQ(screen.Grid1.Rows(), 32767);
}
