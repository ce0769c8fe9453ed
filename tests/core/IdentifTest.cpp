#include "core/Identif.h"

#include "support/ScreenTest.h"

using core::Identif;

namespace {

class Identification : public tests::ScreenTest<Identif> {
protected:
    Identif& OpenScreen()
    {
        if (!core::TheDatabase.IsOpen())
            practice.Open();
        return desk.Open<Identif>();
    }

    QString Stored()
    {
        return tests::RowsOf(practice, "select Registre, Id_Fiscale, Article, Telephone, Fax, Compte, Agence, RIB, RC "
                                       "from Permn")
            .join("//");
    }
};

} // namespace

TEST_F(Identification, SavesEachIdentifierTrimmedAtMaximumLength)
{
    practice.Write("delete from Permn");
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.windowTitle() + screen.SSPanel1.Caption(), " Identification");
    EXPECT_EQ(tests::TextsOf(screen.Text1), QStringList(8, ""));
    EXPECT_EQ(Stored(), " | | | | | | | |-"); // the missing row was made
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    practice.Write("Update Permn set RC = 'OUI'"); // by another program
    for (int field = 0; field < Identif::Identifiers; ++field) {
        EXPECT_TRUE(screen.Text1[field].hasFocus());
        Type(screen.Text1[field], QString(31, QChar('A' + field)));
        Press(screen.Text1[field], field % 2 == 0 ? Qt::Key_Down : Qt::Key_Return);
    }
    EXPECT_TRUE(screen.Text1[0].hasFocus()); // Enter wraps around; arrows stop at the ends
    Press(screen.Text1[0], Qt::Key_Up);
    EXPECT_TRUE(screen.Text1[0].hasFocus());
    Press(screen.Text1[7], Qt::Key_Down);
    EXPECT_TRUE(screen.Text1[7].hasFocus());
    Press(screen.Text1[7], Qt::Key_Up);
    EXPECT_TRUE(screen.Text1[6].hasFocus());
    screen.Text1[2].setText(" 123 ");
    Click(screen.Image1[Identif::Accept]);
    EXPECT_FALSE(screen.isVisible());

    QStringList saved;
    for (int field = 0; field < Identif::Identifiers; ++field)
        saved << (field == 2 ? QString("123") : QString(field == 7 ? 30 : 20, QChar('A' + field)));
    EXPECT_EQ(Stored(), saved.join('|') + "|OUI");
    EXPECT_EQ(tests::TextsOf(OpenScreen().Text1), saved);
}

TEST_F(Identification, SavesOnlyWhatWasChangedAndAccepted)
{
    const struct {
        const char* typed;
        Identif::Way way;
        const char* stored;
    } rows[] = {{"avant", Identif::Accept, "entre-temps"}, // changed back
                {"après", Identif::Leave, "entre-temps"},
                {"avant ", Identif::Accept, "avant"}}; // a blank counts as a change, and is trimmed
    for (const auto& row : rows) {
        practice.Write("Update Permn set Registre = 'avant'");
        auto& screen = OpenScreen();
        Type(screen.Text1[0], "après");
        screen.Text1[0].setText(row.typed);
        Press(screen.Text1[0], Qt::Key_Escape);
        EXPECT_TRUE(screen.isVisible());
        practice.Write("Update Permn set Registre = 'entre-temps'"); // a save overwrites it
        core::DialogResult = core::ResultDone;                       // as a calendar leaves it
        Click(screen.Image1[row.way]);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(practice.Ask("select Registre from Permn").Text(), row.stored) << row.typed;
    }
}
