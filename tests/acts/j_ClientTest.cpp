#include "acts/j_Client.h"

#include "acts/New_Rech.h"
#include "support/ScreenTest.h"

using acts::j_Client;
using acts::New_Rech;
using tests::RowOf;

namespace {

class PatientList : public tests::ScreenTest<j_Client> {
protected:
    j_Client& OpenScreen()
    {
        ExpectSearch();
        return ScreenTest::OpenScreen();
    }

    /// Expects the search, and cancels it.
    void ExpectSearch()
    {
        desk.WhenModal<New_Rech>([](New_Rech& search) { Click(search.Image2[New_Rech::CancelNumber]); });
    }

    /// The screen with a filled list.
    j_Client& ListPatients(const QString& query = "select * from Patients order by num desc")
    {
        auto& screen = OpenScreen();
        screen.ListQuery = query;
        screen.FillPatientGrid();
        return screen;
    }

    static QStringList Counts(j_Client& screen) { return tests::TextsOf(screen.LT); }

    QStringList Statuses() { return tests::RowsOf(practice, "select nom, Flag_H from Patients order by num"); }
};

} // namespace

TEST_F(PatientList, OpensOnTheSearchAndStaysEmpty)
{
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.windowTitle(), " ");
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(screen.Grid1.Text(0, j_Client::Number), "");
    EXPECT_EQ(Counts(screen), QStringList({"", "", ""}));
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), -1);
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());

    Click(screen.Crecettes[j_Client::Archive]); // nobody to archive
    DoubleClick(screen.Grid1, 0);
    EXPECT_EQ(screen.Grid1.Text(0, j_Client::IsRecent), "");
    ExpectSearch();
    Press(screen.Grid1, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(screen.isVisible());
    Click(screen.Crecettes[j_Client::Quit]);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Statuses(), QStringList("Benali|0"));
}

TEST_F(PatientList, ListsTheSelectedPatients)
{
    practice.Add("Patients", {{"nom", "Haddad"},
                              {"Prenom", "Ali"},
                              {"Sexe", 0},
                              {"tel", "021 63"},
                              {"ville", "Alger"},
                              {"diagno", "Migraine"},
                              {"Flag_H", 1}});
    practice.Add("Patients", {{"nom", dao::Value()}, {"Sexe", 2}, {"Flag_H", dao::Value()}});
    auto& screen = ListPatients();

    ASSERT_EQ(screen.Grid1.Rows(), 3);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" 1", "", "", "F", "", "", "", "OUI", ""}));
    EXPECT_EQ(RowOf(screen.Grid1, 1),
              QStringList({" 2", " Haddad", " Ali", "M", " 021 63", " Alger", " Migraine", "", "OUI"}));
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({" 3", " Benali", " Zoé", "F", "", "", "", "OUI", ""}));
    EXPECT_EQ(Counts(screen), QStringList({"2", "1", "3"}));
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);

    screen.ListQuery = "select * from Patients where Flag_H = 1";
    screen.FillPatientGrid();
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(Counts(screen), QStringList({"", "1", "1"}));
    screen.ListQuery = "select * from Patients where num = 0";
    screen.FillPatientGrid();
    EXPECT_EQ(screen.Grid1.Text(0, j_Client::Number), "");
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), -1);
    EXPECT_EQ(Counts(screen), QStringList({"", "", ""}));
}

TEST_F(PatientList, WritesTheStatusesOnQuitOnly)
{
    practice.Add("Patients", {{"nom", "Haddad"}, {"Flag_H", 1}});
    practice.Add("Patients", {{"nom", "Autre"}, {"Flag_H", 7}});
    practice.Add("Patients", {{"nom", "Hors liste"}, {"Flag_H", 7}});
    const QStringList before = Statuses();
    for (const bool byPicture : {false, true}) {
        auto& screen = ListPatients("select * from Patients where num < 4 order by num desc");
        DoubleClick(screen.Grid1, 1);
        EXPECT_EQ(RowOf(screen.Grid1, 1).mid(j_Client::IsRecent), QStringList({"OUI", ""}));
        EXPECT_EQ(Counts(screen), QStringList({"3", "", "3"}));
        Press(screen.Grid1, Qt::Key_Home);
        Press(screen.Grid1, Qt::Key_Space);
        EXPECT_EQ(RowOf(screen.Grid1, 0).mid(j_Client::IsRecent), QStringList({"", "OUI"}));
        EXPECT_EQ(Counts(screen), QStringList({"2", "1", "3"}));
        EXPECT_EQ(Statuses(), before);
        if (byPicture)
            Click(screen.Crecettes[j_Client::Quit]);
        else
            screen.close();
        EXPECT_FALSE(screen.isVisible());
        EXPECT_NE(Statuses() == before, byPicture);
    }
    EXPECT_EQ(Statuses(), QStringList({"Benali|0", "Haddad|0", "Autre|1", "Hors liste|7"}));

    practice.Write("Update Patients set Flag_H = 7 where num = 1");
    auto& screen = ListPatients();
    Click(screen.Crecettes[j_Client::Quit]); // nothing toggled, nothing written
    EXPECT_EQ(Statuses().value(0), "Benali|7");
}

TEST_F(PatientList, SkipsADeletedPatient)
{
    practice.Add("Patients", {{"nom", "Parti"}, {"Flag_H", 0}});
    practice.Add("Patients", {{"nom", "Resté"}, {"Flag_H", 0}});
    auto& screen = ListPatients();
    for (int row = 1; row <= 2; ++row) {
        Click(screen.Grid1, row);
        Click(screen.Crecettes[j_Client::Archive]);
    }
    practice.Remove("Patients", 2);
    Click(screen.Crecettes[j_Client::Quit]);
    EXPECT_EQ(Statuses(), QStringList({"Benali|1", "Resté|0"}));
}

TEST_F(PatientList, ReportsTheLimitOfItsList)
{
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    ASSERT_EQ(other.Run("with recursive n(i) as (values(2) union all select i + 1 from n where i < 16351) "
                        "insert into Patients (nom, Flag_H) select 'N' || i, i % 2 from n"),
              0);
    auto& screen = ListPatients("select * from Patients order by num");
    EXPECT_EQ(screen.Grid1.Rows(), 16351);
    for (const char* nom : {"le dernier", "un de trop"}) {
        practice.Add("Patients", {{"nom", nom}, {"Flag_H", 0}});
        ExpectRefusal("Limite de capacité d'affichage");
        screen.FillPatientGrid();
        EXPECT_EQ(screen.Grid1.Rows(), 16352);
        EXPECT_EQ(screen.Grid1.Text(16351, j_Client::LastName), " le dernier");
        EXPECT_EQ(Counts(screen), QStringList({"8177", "8175", "16352"}));
    }
}
