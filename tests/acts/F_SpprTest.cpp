#include "acts/F_Sppr.h"

#include "core/printing.h"
#include "platform/pages/PageLayout.h"
#include "support/Reports.h"
#include "support/ScreenTest.h"

#include <QHeaderView>
#include <QSet>

using acts::F_Sppr;
using forms::Answer;
using forms::Icon;
using tests::RowOf;

namespace {

constexpr auto TemplateName = "ZEP_Supp.RPT";

class DeletedActs : public tests::ScreenTest<F_Sppr> {
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
        ExpectSaved("Ligne supprimée avec succès", "Lumo ZEP");
        Click(screen.Image1[F_Sppr::Remove]);
    }

    void ExpectQuestion(int line, Answer answer)
    {
        desk.ExpectMessage("Confirmer supression de ligne N°  " + QString::number(line), Icon::Question, "Confirmation",
                           answer);
    }

    /// Whether there is a heading above those of these columns.
    static bool HasGroupHeading(forms::Grid& grid, int first, int last)
    {
        const int left = grid.columnViewportPosition(first), right = grid.columnViewportPosition(last);
        QHeaderView& headings = *grid.horizontalHeader();
        const QImage line =
            headings.viewport()
                ->grab(QRect(left + 4, 4, right + grid.columnWidth(last) - left - 8, headings.height() / 3))
                .toImage();
        QSet<QRgb> colours;
        for (int x = 0; x < line.width(); ++x)
            for (int y = 0; y < line.height(); ++y)
                colours << line.pixel(x, y);
        return colours.size() > 1;
    }

    QString Keys() { return tests::RowsOf(practice, "select num from Actes_suppr order by num").join(' '); }

    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt, Obs, Mt2 from Prov"); }
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
    screen.Image1[F_Sppr::Quit].setFocus(Qt::TabFocusReason);
    EXPECT_EQ(screen.Bulle.text(), " Quitter ");
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);
    EXPECT_FALSE(screen.Combo1.isVisible());
    EXPECT_EQ(screen.Combo1.count(), 6);
    EXPECT_EQ(screen.Combo1.currentText(), " NP");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    EXPECT_NE(screen.findChild<QLabel*>("Label3"), nullptr);
    EXPECT_TRUE(HasGroupHeading(screen.Grid1, F_Sppr::RemovalDate, F_Sppr::RemovalTime)); // "Suppression"
}

TEST_F(DeletedActs, AreListedForATypedDay)
{
    Line("15/06/2008");
    Line("16/06/2008");
    Line("16/06/2008");
    auto& screen = OpenScreen();

    Press(screen.Grid1, Qt::Key_F4);
    EXPECT_TRUE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSPanel2.property("floating").toBool());
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
    desk.ExpectMessage("Date incorrecte", Icon::None, "");
    ChooseDay(screen, "1x/06/2008");
    screen.Text1.clear();
    ExpectSaved("Aucun acte supprimé", "Lumo ZEP");
    Type(screen.Text1, "14062008");
    Press(screen.Text1, Qt::Key_Return);
    EXPECT_TRUE(screen.SSPanel2.isVisible());
    EXPECT_EQ(screen.Grid1.Rows(), 3); // the list is unchanged
    EXPECT_EQ(screen.SSPanel1.Caption(), "Actes supprimés");

    ChooseDay(screen, "16/06//2008"); // of 11 characters
    EXPECT_FALSE(screen.SSPanel2.isVisible());
    EXPECT_TRUE(screen.SSFrame1.isEnabled());
    EXPECT_EQ(screen.SSPanel1.Caption(), "Actes supprimés le 16/06/2008");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    ExpectSaved("Aucun acte supprimé", "Lumo ZEP");
    ChooseDay(screen, "14/06/2008");
    Click(screen.Image2[F_Sppr::Cancel]);
    EXPECT_EQ(screen.SSPanel1.Caption(), "Actes supprimés le 16/06/2008");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(DeletedActs, AreRemovedLineByLine)
{
    for (const char* day : {"17/06/2008", "16/06/2008", "15/06/2008", "17/06/2008", "16/06/2008", "17/06/2008"})
        Line(day); // by their deletion: 3, 2, 5, 1, 4, 6
    auto& screen = OpenScreen();
    ChooseDay(screen, "17/06/2008"); // 1, 4, 6
    Click(screen.Grid1, 1);
    ExpectQuestion(2, Answer::No);
    Click(screen.Image1[F_Sppr::Remove]);
    EXPECT_EQ(Keys(), "1 2 3 4 5 6");
    Delete(screen, 2);
    EXPECT_EQ(Keys(), "1 2 3 5 6");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(screen.Grid1.Row(), 0);

    ChooseDay(screen, "16/06/2008"); // 2, 5
    EXPECT_EQ(tests::ColumnOf(screen.Grid1, F_Sppr::RemovalDate), QStringList(2, "16/06/2008"));
    practice.Remove("Actes_suppr", 5);
    Click(screen.Grid1, 1);
    ExpectQuestion(2, Answer::Yes);
    ExpectGone();
    Click(screen.Image1[F_Sppr::Remove]);
    EXPECT_EQ(Keys(), "1 2 3 6");
    EXPECT_EQ(screen.Grid1.Rows(), 1); // the line is removed from the list anyway
    Delete(screen, 1);
    EXPECT_EQ(Keys(), "1 3 6");
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(RowOf(screen.Grid1, 0).join(""), "");
    Click(screen.Image1[F_Sppr::Remove]); // nothing left to remove or print
    Click(screen.Image1[F_Sppr::Print]);
    EXPECT_EQ(Scratch(), QStringList());
}

TEST_F(DeletedActs, ArePrintedWithTheProgramsTemplate)
{
    tests::PutTemplate(practice, TemplateName);
    Line("16/06/2008");
    const QString kept = QString::number(Line("17/06/2008"));
    auto& screen = OpenScreen();
    practice.Write("Update textes set ch1 = 'vieux', ch4 = 'vieux', ch5 = 'titre 5', ch10 = 'titre 10'");
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
