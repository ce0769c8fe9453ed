#include "acts/New_Rech.h"

#include "support/ScreenTest.h"

#include <QSet>

using acts::New_Rech;
using tests::RowOf;

namespace {

class PatientSearch : public tests::ScreenTest<New_Rech> {
protected:
    PatientSearch()
    {
        practice.Write("delete from Patients");
        practice.Add("Patients", {{"nom", "Mazari"},
                                  {"Prenom", "Ali"},
                                  {"Naiss", "29/02/1960"},
                                  {"Sexe", 0},
                                  {"tel", "021 63"},
                                  {"ville", "Alger"},
                                  {"N_carte", "0123"},
                                  {"Flag_H", 1}});
        Add("maamri", "Zoé", 1, 0);
        Add("MAAMRI", "Élodie", 1, 1);
        Add("Émile", "Ali", 0, 0);
        Add("Étienne", "Marc", 0, 1);
        Add("O'Brien", "Ali", 0, 0);
        Add("بن علي", "محمد", 0, 0);
        Add("[sic]", "Ali", 0, 0);
        practice.Add("Patients", {{"nom", dao::Value()}, {"Prenom", "Seul"}});
    }

    void Add(const QString& nom, const QString& Prenom, int Sexe, int Flag_H)
    {
        practice.Add("Patients", {{"nom", nom}, {"Prenom", Prenom}, {"Sexe", Sexe}, {"Flag_H", Flag_H}});
    }

    static void SearchNames(New_Rech& screen, const QString& nom, const QString& Prenom = "")
    {
        if (!screen.SSTab1.isVisible())
            Click(screen.Image4[New_Rech::Back]);
        screen.SSTab1.setCurrentIndex(New_Rech::NamesPage);
        screen.Text2[New_Rech::LastName].setText(nom);
        screen.Text2[New_Rech::FirstName].setText(Prenom);
        screen.Image2_Click(New_Rech::FindNames);
    }

    static QStringList Found(New_Rech& screen)
    {
        QStringList names;
        for (int row = 0; row < screen.Grid2.Rows(); ++row)
            names << screen.Grid2.Text(row, New_Rech::Name).trimmed() + " " +
                         screen.Grid2.Text(row, New_Rech::GivenName).trimmed();
        return names;
    }

    static bool ShowsCriteria(New_Rech& screen)
    {
        EXPECT_TRUE(screen.Image4[New_Rech::Leave].isVisible());
        EXPECT_NE(screen.SSTab1.isVisible(), screen.Image4[New_Rech::Close].isVisible());
        EXPECT_NE(screen.SSTab1.isVisible(), screen.Image4[New_Rech::Back].isVisible());
        return screen.SSTab1.isVisible();
    }
};

} // namespace

TEST_F(PatientSearch, FindsByTheStartOfTheNameIgnoringCase)
{
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.windowTitle(), " ");
    EXPECT_TRUE(ShowsCriteria(screen));
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    screen.SSTab1.setCurrentIndex(New_Rech::NamesPage);
    EXPECT_TRUE(screen.SSOption1[New_Rech::NoCriterion].isChecked()); // "Ensemble" in both frames
    EXPECT_TRUE(screen.SSOption2[New_Rech::NoCriterion].isChecked());

    ASSERT_TRUE(screen.Text2[New_Rech::LastName].hasFocus());
    Type(screen.Text2[New_Rech::LastName], "Ma");
    Press(screen.Text2[New_Rech::LastName], Qt::Key_Return);
    ASSERT_TRUE(screen.Text2[New_Rech::FirstName].hasFocus());
    Press(screen.Text2[New_Rech::FirstName], Qt::Key_Return);

    EXPECT_FALSE(ShowsCriteria(screen));
    EXPECT_EQ(core::QueryText, "Select * from Patients where nom like 'Ma*' order by nom,prenom");
    EXPECT_EQ(Found(screen), QStringList({"MAAMRI Élodie", "maamri Zoé", "Mazari Ali"}));
    EXPECT_EQ(RowOf(screen.Grid2, 0), QStringList({" 1", " MAAMRI", " Élodie", "", "F", "", "", "", "OUI"}));
    EXPECT_EQ(RowOf(screen.Grid2, 1), QStringList({" 2", " maamri", " Zoé", "", "F", "", "", "", ""}));
    EXPECT_EQ(RowOf(screen.Grid2, 2),
              QStringList({" 3", " Mazari", " Ali", "29/02/1960", "M", " 021 63", " Alger", " 0123", "OUI"}));
    EXPECT_TRUE(screen.Grid2.hasFocus());
    EXPECT_EQ(tests::HighlightedRow(screen.Grid2), 0);
    EXPECT_EQ(core::DialogResult, 0);
}

TEST_F(PatientSearch, AppliesEachCriterion)
{
    auto& screen = OpenScreen();
    screen.SSTab1.setCurrentIndex(New_Rech::NamesPage);
    screen.SSOption1[0].click();
    screen.SSOption2[1].click();
    ExpectRefusal("Critères Omis");
    SearchNames(screen, "  ", " ");
    EXPECT_TRUE(screen.Text2[New_Rech::LastName].hasFocus());
    ExpectRefusal("Aucun enregistrement selon ces critères");
    screen.Text2[New_Rech::LastName].setText("A");
    Press(screen.SSOption2[1], Qt::Key_Return);
    EXPECT_EQ(core::QueryText,
              "Select * from Patients where nom like 'A*' and Sexe = 0 and Flag_H = 1 order by nom,prenom");
    EXPECT_TRUE(ShowsCriteria(screen));
    EXPECT_EQ(screen.Text2[New_Rech::LastName].text(), "A");

    SearchNames(screen, "", "a");
    EXPECT_EQ(core::QueryText,
              "Select * from Patients where prenom like 'a*' and Sexe = 0 and Flag_H = 1 order by nom,prenom");
    EXPECT_EQ(Found(screen), QStringList("Mazari Ali"));
    SearchNames(screen, " m ", " A ");
    EXPECT_EQ(Found(screen), QStringList("Mazari Ali"));
    screen.SSOption2[New_Rech::NoCriterion].setChecked(true);
    screen.SSOption1[1].setChecked(true);
    SearchNames(screen, "*", "z");
    EXPECT_EQ(Found(screen), QStringList("maamri Zoé"));
}

TEST_F(PatientSearch, AcceptsWildcardsAccentsAndOtherLetters)
{
    auto& screen = OpenScreen();
    const std::pair<QString, QStringList> searches[] = {
        {"É", {"Émile Ali", "Étienne Marc"}},
        {"é", {"Émile Ali", "Étienne Marc"}},
        {"بن", {"بن علي محمد"}},
        {"?a", {"MAAMRI Élodie", "maamri Zoé", "Mazari Ali"}},
        {"*i", {"[sic] Ali", "MAAMRI Élodie", "maamri Zoé", "Mazari Ali", "O'Brien Ali", "Émile Ali", "Étienne Marc"}},
        {"[", {"[sic] Ali"}}, // an unclosed bracket is literal
        {"[lm]", {"MAAMRI Élodie", "maamri Zoé", "Mazari Ali"}},
    };
    for (const auto& [typed, names] : searches) {
        SearchNames(screen, typed);
        const QStringList found = Found(screen);
        EXPECT_EQ(QSet<QString>(found.begin(), found.end()), QSet<QString>(names.begin(), names.end()))
            << qPrintable(typed);
    }
    for (const char* quote : {"O'", "O'B", "'"}) // quotes aren't escaped: the engine refuses the statement
        EXPECT_EQ(ErrorOf([&] { SearchNames(screen, quote); }), Error::SyntaxError) << quote;
    SearchNames(screen, "O''");
    EXPECT_EQ(Found(screen), QStringList("O'Brien Ali"));
}

TEST_F(PatientSearch, ChoosesThePatientOfACardNumber)
{
    practice.Add("Patients", {{"nom", "Double"}, {"N_carte", "0123"}});
    practice.Add("Patients", {{"nom", "Autre"}, {"N_carte", "123"}});
    practice.Add("Patients", {{"nom", "Sans carte"}, {"N_carte", ""}});
    auto& screen = OpenScreen();
    ASSERT_TRUE(screen.Text2[New_Rech::CardNumber].hasFocus());
    for (const char* blank : {"", "  "}) { // other patients have no number
        screen.Text2[New_Rech::CardNumber].setText(blank);
        ExpectRefusal("N° Omis");
        Click(screen.Image2[New_Rech::FindNumber]);
    }
    screen.Text2[New_Rech::CardNumber].clear();
    Type(screen.Text2[New_Rech::CardNumber], "0-1x2");
    EXPECT_EQ(screen.Text2[New_Rech::CardNumber].text(), "012"); // digits only
    ExpectRefusal("Numéro inexistant");
    Press(screen.Text2[New_Rech::CardNumber], Qt::Key_Return);
    EXPECT_EQ(screen.Text2[New_Rech::CardNumber].text(), "012");
    EXPECT_EQ(core::DialogResult, 0);
    screen.Text2[New_Rech::CardNumber].setText("0*"); // no wildcard here
    ExpectRefusal("Numéro inexistant");
    Click(screen.Image2[New_Rech::FindNumber]);

    screen.Text2[New_Rech::CardNumber].setText(" 0123 ");
    Press(screen.Text2[New_Rech::CardNumber], Qt::Key_Return);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(core::DialogResult, core::ResultAccepted);
    EXPECT_EQ(practice.Stored("Patients", core::SelectedPatient, "nom").Text(), "Mazari"); // the first of two

    auto& again = desk.Open<New_Rech>();
    Type(again.Text2[New_Rech::CardNumber], "123");
    Press(again.Text2[New_Rech::CardNumber], Qt::Key_Return);
    EXPECT_EQ(practice.Stored("Patients", core::SelectedPatient, "nom").Text(), "Autre");
}

TEST_F(PatientSearch, ReturnsToTheCriteriaAndChoosesNobodyFromItsResults)
{
    auto& screen = OpenScreen();
    SearchNames(screen, "m");
    Press(screen.Grid2, Qt::Key_Escape);
    EXPECT_TRUE(ShowsCriteria(screen));
    EXPECT_EQ(screen.Text2[New_Rech::LastName].text(), "m"); // as typed
    EXPECT_TRUE(screen.Text2[New_Rech::LastName].hasFocus());

    SearchNames(screen, "É");
    EXPECT_EQ(Found(screen), QStringList({"Émile Ali", "Étienne Marc"})); // nothing of the first search remains
    Press(screen.Grid2, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(ShowsCriteria(screen));
    SearchNames(screen, "m");
    Click(screen.Grid2, 2);
    EXPECT_TRUE(screen.isVisible());
    DoubleClick(screen.Grid2, 1);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(core::DialogResult, 0);
    EXPECT_EQ(core::SelectedPatient, 0);
}

TEST_F(PatientSearch, IsClosedByItsPicturesAndEscape)
{
    practice.Open();
    for (const int cancel : {int(New_Rech::CancelNumber), int(New_Rech::CancelNames), -1}) {
        auto& screen = desk.Open<New_Rech>();
        screen.SSTab1.setCurrentIndex(cancel == New_Rech::CancelNumber ? New_Rech::NumberPage : New_Rech::NamesPage);
        core::DialogResult = 0;
        if (cancel < 0)
            Press(screen.Text2[New_Rech::LastName], Qt::Key_Escape);
        else
            Click(screen.Image2[cancel]);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(core::DialogResult, core::ResultCancelled);
    }
    core::DialogResult = 0;
    for (const int way : {New_Rech::Close, New_Rech::Leave}) {
        auto& screen = desk.Open<New_Rech>();
        SearchNames(screen, "m");
        Click(screen.Image4[way]);
        EXPECT_FALSE(screen.isVisible());
    }
    EXPECT_EQ(core::DialogResult, 0);
}
