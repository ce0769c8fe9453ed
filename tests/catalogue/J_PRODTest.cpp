#include "catalogue/J_PROD.h"

#include "support/ScreenTest.h"

using catalogue::J_PROD;
using forms::Answer;
using tests::RowOf;

namespace {

class Services : public tests::ScreenTest<J_PROD> {
protected:
    /// Services 1 to 5: "Consultation", "ECG", "Pansement", "Injection", "Visite".
    void AddThree()
    {
        for (const char* name : {"Pansement", "Injection", "Visite"})
            practice.Service(name, 1 + practice.Ask("select count(num) as S1 from Presta").Long());
    }

    void Enter(J_PROD& screen, const QString& name, const QString& price)
    {
        Type(screen.NameField, name);
        Type(screen.PriceField, price);
        ExpectSaved("Enregistrement réussi", "Lumo Orvane");
        Click(screen.Image2[J_PROD::Accept]);
    }

    void Delete(J_PROD& screen, int asked, Answer answer = Answer::Yes)
    {
        ExpectDeletion(asked, answer);
        Press(screen.Grid1, Qt::Key_Delete);
    }
    void RefuseUsed(J_PROD& screen)
    {
        ExpectRefusal("Cette prestation est incluse dans un acte");
        Press(screen.Grid1, Qt::Key_Delete);
    }

    void Quit(J_PROD& screen) { Click(screen.Crecettes[J_PROD::Quit]); }

    static QStringList Column(const J_PROD& screen, int column) { return tests::ColumnOf(screen.Grid1, column); }

    QStringList Stored() { return tests::RowsOf(practice, "select num, Ordre from Presta order by Ordre"); }

    /// In the list the grid is enabled and all four buttons are shown; in an entry only "Quitter".
    static bool IsListing(J_PROD& screen)
    {
        const bool listing = !screen.SSPanel3.isVisible();
        EXPECT_TRUE(screen.Crecettes[J_PROD::Quit].isVisible());
        for (const int action : {J_PROD::New, J_PROD::Modify, J_PROD::Delete})
            EXPECT_EQ(screen.Crecettes[action].isVisible(), listing);
        EXPECT_EQ(screen.Grid1.isEnabled(), listing && screen.Grid1.Text(0, J_PROD::Name) != "");
        return listing;
    }
};

} // namespace

TEST_F(Services, ListsTheServicesInTheirOrder)
{
    practice.Add("Presta", {{"denom", "  Pansement "}, {"prix", 440.5}, {"Ordre", -1}}); // first, though last by key
    auto& screen = OpenScreen();

    EXPECT_TRUE(IsListing(screen));
    ASSERT_EQ(screen.Grid1.Rows(), 3);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", " Pansement", "440.5 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", " Consultation", ""})); // no price yet
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({"3", " ECG", ""}));
    EXPECT_EQ(screen.Grid1.model()->headerData(1, Qt::Horizontal).toString(), "Dénmination");
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);
    EXPECT_EQ(screen.windowTitle(), " ");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    core::PrestaTable.MoveFirst(); // the handles of the run were replaced by open ones
    EXPECT_EQ(core::PrestaTable["denom"].Text(), "Consultation");
    Quit(screen);
    EXPECT_EQ(Stored(), QStringList({"3|-1", "1|0", "2|1"})); // nothing was changed, nothing is written
}

TEST_F(Services, StoresAPriceAsANumberAndShowsItAsTyped)
{
    auto& screen = OpenScreen();
    Press(screen.Grid1, Qt::Key_Insert);
    EXPECT_FALSE(IsListing(screen));
    EXPECT_TRUE(screen.SSPanel3.property("floating").toBool());
    EXPECT_EQ(screen.SSPanel2.Caption(), "NOUVELLE PRESTATION");
    ASSERT_TRUE(screen.NameField.hasFocus());
    Type(screen.NameField, " Visite ");
    Press(screen.NameField, Qt::Key_Return);
    ASSERT_TRUE(screen.PriceField.hasFocus());
    Type(screen.PriceField, "12,50x");
    Press(screen.PriceField, Qt::Key_Return); // refused
    EXPECT_FALSE(IsListing(screen));
    ExpectSaved("Enregistrement réussi", "Lumo Orvane");
    Press(screen.Image2[J_PROD::Accept], Qt::Key_Return);

    EXPECT_TRUE(IsListing(screen));
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({"3", "  Visite ", "12.50 "}));
    EXPECT_EQ(tests::RowsOf(practice, "select * from Presta where num = 3"), QStringList("3|Visite|12.5|2"));
    Quit(screen);

    EXPECT_EQ(RowOf(desk.Open<J_PROD>().Grid1, 2), QStringList({"3", " Visite", "12.5 "}));
}

TEST_F(Services, AsksForNameAndPrice)
{
    auto& screen = OpenScreen();
    Click(screen.Crecettes[J_PROD::New]);
    const struct {
        const char *name, *price;
        QWidget& missing;
    } incomplete[] = {{"", "", screen.NameField},
                      {"Visite", "", screen.PriceField},
                      {"  ", "12", screen.NameField},
                      {"Visite", "  ", screen.PriceField}};
    for (const auto& entry : incomplete) {
        screen.NameField.setText(entry.name);
        screen.PriceField.setText(entry.price);
        ExpectRefusal("saisie incomplète");
        Click(screen.Image2[J_PROD::Accept]);
        EXPECT_FALSE(IsListing(screen));
        EXPECT_TRUE(entry.missing.hasFocus()) << entry.name << entry.price;
        EXPECT_EQ(screen.NameField.text() + '|' + screen.PriceField.text(), QString(entry.name) + '|' + entry.price);
    }
    Press(screen.NameField, Qt::Key_Escape);
    EXPECT_TRUE(IsListing(screen));
    Click(screen.Crecettes[J_PROD::Modify]);
    Click(screen.Image2[J_PROD::Cancel]);
    EXPECT_TRUE(IsListing(screen));
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(Stored(), QStringList({"1|0", "2|1"}));
    Press(screen.Grid1, Qt::Key_Insert); // after an entry for a new service, even a cancelled one, each adds a row
    Press(screen.NameField, Qt::Key_Escape);
    Press(screen.Grid1, Qt::Key_F2);
    screen.NameField.clear();
    Enter(screen, "Visite", "900");
    EXPECT_EQ(Stored(), QStringList({"1|0", "2|1", "3|2"}));
}

TEST_F(Services, ModifiesInPlaceUntilANewOneWasEnteredThenAdds)
{
    practice.Write("Update Presta set prix = 99.5");
    auto& screen = OpenScreen();
    DoubleClick(screen.Grid1, 1);
    EXPECT_EQ(screen.SSPanel2.Caption(), "MODIFICATION");
    EXPECT_EQ(screen.NameField.text(), "ECG");
    EXPECT_EQ(screen.PriceField.text(), "99.5");
    Enter(screen, "ECG d'effort", "840");
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", " ECG d'effort", "840 "}));
    EXPECT_EQ(tests::RowsOf(practice, "select * from Presta where num = 2"), QStringList("2|ECG d'effort|840|1"));

    Press(screen.Grid1, Qt::Key_Insert);
    EXPECT_EQ(screen.NameField.text() + screen.PriceField.text(), ""); // nothing of the one modified before
    Enter(screen, "Visite", "1000");
    Click(screen.Grid1, 0);
    Press(screen.Grid1, Qt::Key_F2);
    EXPECT_EQ(screen.SSPanel2.Caption(), "MODIFICATION");
    Enter(screen, "Consultation de nuit", "3000");

    EXPECT_EQ(Column(screen, J_PROD::Name),
              QStringList({"Consultation", "ECG d'effort", "Visite", "Consultation de nuit"}));
    EXPECT_EQ(practice.Stored("Presta", 1, "denom").Text(), "Consultation");
    EXPECT_EQ(tests::RowsOf(practice, "select denom, Ordre from Presta where num = 4"),
              QStringList("Consultation de nuit|3"));
    Quit(screen);

    auto& again = desk.Open<J_PROD>();
    Click(again.Grid1, 3);
    Press(again.Grid1, Qt::Key_Return);
    Enter(again, "Garde", "3500"); // in place again
    EXPECT_EQ(again.Grid1.Rows(), 4);
    EXPECT_EQ(practice.Stored("Presta", 4, "denom").Text(), "Garde");
}

TEST_F(Services, OpensTheEntryPanelWhenThereAreNone)
{
    practice.Write("delete from Presta");
    auto& screen = OpenScreen();
    EXPECT_FALSE(IsListing(screen));
    EXPECT_EQ(screen.SSPanel2.Caption(), "NOUVELLE PRESTATION");
    EXPECT_TRUE(screen.NameField.hasFocus());

    Click(screen.Image2[J_PROD::Cancel]); // the list is empty: nothing to modify, delete or move
    EXPECT_TRUE(IsListing(screen));
    for (const int action : {J_PROD::Modify, J_PROD::Delete})
        Click(screen.Crecettes[action]);
    Click(screen.Image1[J_PROD::MoveDown]);
    EXPECT_TRUE(IsListing(screen));

    Click(screen.Crecettes[J_PROD::New]);
    Enter(screen, "Consultation", "1500");
    EXPECT_TRUE(screen.Grid1.isEnabled());
    Click(screen.Crecettes[J_PROD::New]);
    Enter(screen, "ECG", "840");
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", " Consultation", "1500 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", " ECG", "840 "}));
    EXPECT_EQ(tests::RowsOf(practice, "select denom, Ordre from Presta order by Ordre"),
              QStringList({"Consultation|0", "ECG|1"}));
}

TEST_F(Services, MoveBetweenTheProtectedPositionAndTheEnd)
{
    practice.Write("Update Presta set prix = num");
    AddThree();
    auto& screen = OpenScreen();
    const QStringList before = Column(screen, J_PROD::Name);

    Press(screen.Grid1, Qt::Key_Down, Qt::AltModifier); // the first can't be moved
    Press(screen.Grid1, Qt::Key_Up, Qt::AltModifier);
    Click(screen.Grid1, 1);
    Press(screen.Grid1, Qt::Key_Up, Qt::AltModifier); // it can't be displaced
    Click(screen.Grid1, 4);
    Click(screen.Image1[J_PROD::MoveDown]);
    EXPECT_EQ(Column(screen, J_PROD::Name), before);
    EXPECT_EQ(screen.Grid1.Row(), 4);

    Click(screen.Grid1, 1); // "ECG" goes to the end
    for (int step = 0; step < 4; ++step)
        Press(screen.Grid1, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(screen.Grid1.Row(), 4);
    Click(screen.Grid1, 3); // and "Visite" after the first
    Click(screen.Image1[J_PROD::MoveUp]);
    Click(screen.Image1[J_PROD::MoveUp]);
    Click(screen.Image1[J_PROD::MoveUp]);
    EXPECT_EQ(screen.Grid1.Row(), 1);
    EXPECT_EQ(Column(screen, J_PROD::Name), QStringList({"Consultation", "Visite", "Pansement", "Injection", "ECG"}));
    EXPECT_EQ(Column(screen, J_PROD::Number), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(Column(screen, J_PROD::Price), QStringList({"1", "", "", "", "2"}));

    EXPECT_EQ(Stored(), QStringList({"1|0", "2|1", "3|3", "4|4", "5|5"})); // only on the screen
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Stored(), QStringList({"1|0", "5|1", "3|2", "4|3", "2|4"}));
}

TEST_F(Services, LoseTheirMovesByTheCloseBoxOnly)
{
    AddThree();
    auto& screen = OpenScreen();
    Click(screen.Grid1, 2);
    Click(screen.Image1[J_PROD::MoveUp]);
    screen.close();
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Stored(), QStringList({"1|0", "2|1", "3|3", "4|4", "5|5"}));

    auto& again = desk.Open<J_PROD>();
    Click(again.Grid1, 2);
    Click(again.Image1[J_PROD::MoveUp]);
    Press(again.Grid1, Qt::Key_F2); // saved at its new position, still the same service
    EXPECT_EQ(again.NameField.text(), "Pansement");
    Click(again.Image1[J_PROD::MoveDown]); // even when moved while being modified
    Enter(again, "Bandage", "5");
    again.close();
    EXPECT_EQ(practice.Stored("Presta", 3, "denom").Text(), "Bandage");
    EXPECT_EQ(practice.Stored("Presta", 3, "Ordre").Long(), 2);
    EXPECT_EQ(practice.Stored("Presta", 2, "Ordre").Long(), 1);
}

TEST_F(Services, LeaveAGapInTheKeysAndNoneInTheOrder)
{
    AddThree();
    auto& screen = OpenScreen();
    Click(screen.Grid1, 2);
    Delete(screen, 3, Answer::No);
    EXPECT_EQ(screen.Grid1.Rows(), 5);
    Delete(screen, 3);

    EXPECT_EQ(Column(screen, J_PROD::Number), QStringList({"1", "2", "4", "5"}));
    EXPECT_EQ(Column(screen, J_PROD::Name), QStringList({"Consultation", "ECG", "Injection", "Visite"}));
    EXPECT_EQ(screen.Grid1.Row(), 0);
    EXPECT_EQ(Stored(), QStringList({"1|0", "2|1", "4|4", "5|5"}));
    Press(screen.Grid1, Qt::Key_Delete); // the first is never deleted: no question
    Click(screen.Grid1, 2);
    Press(screen.Grid1, Qt::Key_F2); // list and rows still match
    EXPECT_EQ(screen.NameField.text(), "Injection");
    Click(screen.Image2[J_PROD::Cancel]);
    Quit(screen);
    EXPECT_EQ(Stored(), QStringList({"1|0", "2|1", "4|2", "5|3"}));
}

TEST_F(Services, CantBeDeletedWhileUsedByAnAct)
{
    AddThree();
    practice.Act({.day = "01/01/1999", .num_presta = 2, .Flag_H = 1});
    practice.Add("Plani", {{"date", "17/06/2008"}, {"Num_Presta", 3}, {"HH", 1}, {"num_patient", 1}});
    practice.Add("Actes_suppr", {{"num_presta", 3}});
    auto& screen = OpenScreen();
    Click(screen.Grid1, 1);
    RefuseUsed(screen);
    EXPECT_EQ(screen.Grid1.Rows(), 5);

    Click(screen.Grid1, 2); // appointments and deleted acts don't count
    Delete(screen, 3);
    EXPECT_EQ(practice.Ask("select count(num) as S1 from Presta where num = 3").Long(), 0);

    practice.Act({.num_presta = 4}); // added since the screen was opened
    Click(screen.Grid1, 2);
    RefuseUsed(screen);

    Click(screen.Grid1, 3); // and while the question is open
    desk.Meanwhile = [&] { practice.Act({.num_presta = 5}); };
    ExpectDeletion(4);
    RefuseUsed(screen);
    EXPECT_EQ(Stored(), QStringList({"1|0", "2|1", "4|4", "5|5"}));
    EXPECT_EQ(screen.Grid1.Rows(), 4);
}

TEST_F(Services, KeepServicesAddedByOthersAndSkipDeletedOnes)
{
    AddThree();
    auto& screen = OpenScreen();
    practice.Service("Vaccin", 1);
    practice.Remove("Presta", 3);
    Click(screen.Grid1, 4);
    Click(screen.Image1[J_PROD::MoveUp]);
    Quit(screen);
    EXPECT_EQ(tests::RowsOf(practice, "select denom, Ordre from Presta order by num"),
              QStringList({"Consultation|0", "ECG|1", "Injection|4", "Visite|3", "Vaccin|1"}));
}

TEST_F(Services, ReportADeletedServiceAndTouchNoOther)
{
    AddThree();
    auto& screen = OpenScreen();
    practice.Remove("Presta", 2);
    DoubleClick(screen.Grid1, 0);
    Click(screen.Image2[J_PROD::Cancel]);
    ExpectGone();
    DoubleClick(screen.Grid1, 1);
    EXPECT_TRUE(IsListing(screen));

    DoubleClick(screen.Grid1, 1); // "Pansement", deleted while being modified
    practice.Remove("Presta", 3);
    Type(screen.NameField, "Bandage");
    Type(screen.PriceField, "5");
    ExpectGone();
    Click(screen.Image2[J_PROD::Accept]);
    EXPECT_TRUE(IsListing(screen));

    Click(screen.Grid1, 1); // "Injection", deleted while the question is open
    desk.Meanwhile = [&] { practice.Remove("Presta", 4); };
    ExpectDeletion(2);
    ExpectGone();
    Press(screen.Grid1, Qt::Key_Delete);

    EXPECT_EQ(Column(screen, J_PROD::Name), QStringList({"Consultation", "Visite"}));
    practice.Write("delete from Presta");
    ExpectGone();
    Press(screen.Grid1, Qt::Key_F2);
    ExpectGone();
    Press(screen.Grid1, Qt::Key_F2);
    EXPECT_FALSE(screen.Grid1.isEnabled()); // nothing is left
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"", "", ""}));
}

TEST_F(Services, NameTheirPicturesInTheLanguageOfThePractice)
{
    practice.Open();
    core::LanguageMode = core::Arabic;
    auto& screen = desk.Open<J_PROD>();
    EXPECT_EQ(screen.Bulle.objectName(), "Bulle(1)");
    screen.Crecettes[J_PROD::Modify].setFocus();
    EXPECT_TRUE(screen.Bulle.isVisible());
    EXPECT_EQ(screen.Bulle.text(), "مـراجـعة");
    core::LanguageMode = core::True;
    screen.Crecettes[J_PROD::Delete].setFocus();
    EXPECT_EQ(screen.Bulle.text(), " Supprimer ");
    screen.Image1[J_PROD::MoveUp].setFocus();
    EXPECT_FALSE(screen.Bulle.isVisible());
}
