#include "expenses/F_Dep.h"

#include "core/Q_Date_2.h"
#include "core/configuration.h"
#include "support/ScreenTest.h"

using core::PeriodChooser;
using expenses::EntryPanel;
using expenses::F_Dep;
using forms::Answer;
using tests::RowOf;

namespace {

class Expenses : public tests::ScreenTest<F_Dep> {
protected:
    Expenses() { practice.Remove("Recettes", practice.Expense({})); } // keys aren't positions

    static void FillPanel(F_Dep& screen, const QString& date, const QString& object, const QString& amount)
    {
        screen.SSPanel3.Date.setText(date);
        screen.SSPanel3.Object.setText(object);
        screen.SSPanel3.Amount.setText(amount);
    }

    static QStringList Entry(F_Dep& screen)
    {
        return {screen.SSPanel3.Date.text(), screen.SSPanel3.Object.text(), screen.SSPanel3.Amount.text()};
    }

    static void Accept(F_Dep& screen) { Click(screen.SSPanel3.Image2[EntryPanel::Accept]); }

    void AddExpense(F_Dep& screen, const QString& date, const QString& object, const QString& amount)
    {
        Click(screen.Crecettes[F_Dep::New]);
        FillPanel(screen, date, object, amount);
        ExpectSaved("Enregistrement terminé");
        Accept(screen);
    }

    void Delete(F_Dep& screen, int asked, Answer answer = Answer::Yes)
    {
        ExpectDeletion(asked, answer);
        Press(screen.Grid1, Qt::Key_A, Qt::ControlModifier);
        desk.Meanwhile = [&screen, asked] { // the row that the question names is highlighted alone
            EXPECT_EQ(screen.Grid1.selectionModel()->selectedRows().size(), 1);
            EXPECT_EQ(tests::HighlightedRow(screen.Grid1), asked - 1);
        };
        Press(screen.Grid1, Qt::Key_Delete);
    }

    /// What is shown: "dates" or "entry" over the list, or the "list" and its pictures.
    static QString Shown(F_Dep& screen)
    {
        const bool dates = screen.Dates.isVisible(), entry = screen.SSPanel3.isVisible();
        for (int picture = F_Dep::New; picture <= F_Dep::Quit; ++picture)
            EXPECT_EQ(screen.Crecettes[picture].isVisible(), picture == F_Dep::Quit || !(dates || entry));
        EXPECT_FALSE(dates && entry);
        EXPECT_FALSE((dates || entry) && screen.Grid1.isEnabled());
        return dates ? "dates" : entry ? "entry" : "list";
    }

    QStringList Stored()
    {
        return tests::RowsOf(practice, "select Date, MM, objet, montant from Recettes order by num");
    }
};

} // namespace

TEST_F(Expenses, OpenWithTodaysList)
{
    practice.Expense({.day = "16/06/2008", .montant = 1000});
    practice.Expense({.montant = 123456789.5, .objet = "  Coton  "});
    practice.Expense({.montant = 0.25, .objet = dao::Value()});
    practice.Add("Recettes", {{"Date", "17/06/2008"}, {"objet", "Sans montant"}});
    auto& screen = OpenScreen();

    EXPECT_EQ(screen.windowTitle(), "   Dépenses  ");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Dépenses du 17/06/2008");
    EXPECT_EQ(Shown(screen), "list");
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);
    ASSERT_EQ(screen.Grid1.Rows(), 3);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", "17/06/2008", " Coton", "123456789.5 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", "17/06/2008", "", "0.25 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({"3", "17/06/2008", " Sans montant", ""}));
    EXPECT_EQ(screen.Label5.text(), " 123 456 789.75");
    EXPECT_GE(screen.Label5.width(), screen.Label5.NeededWidth());
    EXPECT_TRUE(tests::IsUnder(screen.Label5, screen.Grid1, F_Dep::Amount));
    EXPECT_EQ(tests::TextsOf(screen.Dates.Text1), QStringList(3, "17/06/2008"));
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());

    DoubleClick(screen.Grid1, 2); // an expense with Null amount and object can be edited
    EXPECT_EQ(Entry(screen), QStringList({"17/06/2008", "Sans montant", ""}));
    Press(screen.SSPanel3.Amount, Qt::Key_Escape);
    DoubleClick(screen.Grid1, 1);
    EXPECT_EQ(Entry(screen), QStringList({"17/06/2008", "", "0.25"}));
}

TEST_F(Expenses, AreEnteredByKeyboardAndListedLast)
{
    constexpr int listed = 60; // more than fit
    for (int expense = 0; expense < listed; ++expense)
        practice.Expense({.montant = 1});
    auto& screen = OpenScreen();
    tests::AcceptPeriod(screen.Dates, "01/06/2008", "30/06/2008");

    Press(screen.Grid1, Qt::Key_Insert);
    ASSERT_EQ(Shown(screen), "entry");
    EXPECT_TRUE(screen.SSPanel3.property("floating").toBool());
    EXPECT_EQ(screen.SSPanel3.SSPanel2.Caption(), "NOUVELLE DEPENSE");
    EXPECT_EQ(Entry(screen), QStringList({"30/06/2008", "", ""})); // as the period left it
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    Type(screen.SSPanel3.Date, "05022007");
    Press(screen.SSPanel3.Date, Qt::Key_Return);
    ASSERT_TRUE(screen.SSPanel3.Object.hasFocus());
    Type(screen.SSPanel3.Object, " Gants d'été ");
    Press(screen.SSPanel3.Object, Qt::Key_Return);
    ASSERT_TRUE(screen.SSPanel3.Amount.hasFocus());
    Type(screen.SSPanel3.Amount, "-12x34,5,");
    ExpectSaved("Enregistrement terminé");
    Press(screen.SSPanel3.Amount, Qt::Key_Return);

    EXPECT_EQ(Shown(screen), "list");
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(Stored().last(), "05/02/2007|2|Gants d'été|-1234.5");
    ASSERT_EQ(screen.Grid1.Rows(), listed + 1);
    EXPECT_EQ(RowOf(screen.Grid1, listed), QStringList({"61", "05/02/2007", " Gants d'été", "-1234.5 "}));
    EXPECT_EQ(screen.Label5.text(), " - 1 174.50");
    support::ProcessEvents();
    const QRect added = screen.Grid1.visualRect(screen.Grid1.model()->index(listed, 0));
    EXPECT_TRUE(screen.Grid1.viewport()->rect().contains(added));

    Click(screen.Grid1, listed); // the new row can be changed at once
    Press(screen.Grid1, Qt::Key_F2);
    EXPECT_EQ(Entry(screen).last(), "-1234.5");
    Press(screen.SSPanel3.Amount, Qt::Key_Escape);
    tests::AcceptPeriod(screen.Dates, "01/06/2008", "30/06/2008"); // and isn't in this period
    EXPECT_EQ(screen.Grid1.Rows(), listed);
}

TEST_F(Expenses, ProposeTheDateOfTheLastPeriod)
{
    auto& screen = OpenScreen();
    const auto proposed = [&screen] {
        Click(screen.Crecettes[F_Dep::New]);
        const QString date = screen.SSPanel3.Date.text();
        Click(screen.SSPanel3.Image2[EntryPanel::Cancel]);
        return date;
    };
    EXPECT_EQ(proposed(), core::LetterheadField(2).trimmed()); // as the configuration left it
    tests::AcceptDay(screen.Dates, "03/03/2008");
    EXPECT_EQ(core::ConfigLines[0], "03/03/2008");
    EXPECT_EQ(proposed(), core::LetterheadField(2).trimmed());
    tests::AcceptPeriod(screen.Dates, "01/01/2008", "31/01/2008");
    EXPECT_EQ(core::ConfigLines[0], "01/01/2008");
    EXPECT_EQ(proposed(), "31/01/2008");
}

TEST_F(Expenses, TakeTheirDateFromTheCalendar)
{
    auto& screen = OpenScreen();
    Press(screen.Grid1, Qt::Key_Insert);
    const struct {
        const char *typed, *preset, *left;
        Qt::Key key;
    } rows[] = {{nullptr, "17/06/2008", nullptr, Qt::Key_Escape}, // a line of the letterhead is no day
                {"05/02/2007", "05/02/2007", "05/02/2007", Qt::Key_Escape},
                {"05/02/2007", "05/02/2007", "06/02/2007", Qt::Key_Right}};
    for (const auto& row : rows) {
        if (row.typed != nullptr)
            screen.SSPanel3.Date.setText(row.typed);
        const QString before = screen.SSPanel3.Date.text();
        desk.WhenModal<core::Q_Date_2>([&row](core::Q_Date_2& picker) {
            QWidget& days = *picker.focusWidget();
            EXPECT_EQ(days.accessibleName().right(10), row.preset);
            Press(days, row.key);
            if (picker.isVisible())
                Press(*picker.focusWidget(), Qt::Key_Return);
        });
        Press(screen.SSPanel3.Date, Qt::Key_F4);
        EXPECT_EQ(screen.SSPanel3.Date.text(), row.left != nullptr ? row.left : before);
        EXPECT_EQ(screen.focusWidget(), &screen.SSPanel3.Date);
    }
}

TEST_F(Expenses, AreRefusedWithBlankOrInvalidFieldsAndKeepTheRow)
{
    practice.Expense({.montant = 7, .objet = "Avant"});
    auto& screen = OpenScreen();
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    const struct {
        QStringList entry;
        const char* reason;
        QWidget& focused;
    } refused[] = {
        {{"  ", "Après", "5"}, "saisie incomplète", screen.SSPanel3.Date},
        {{"17/06/2008", "  ", "5"}, "saisie incomplète", screen.SSPanel3.Object},
        {{"17/06/2008", "Après", "  "}, "saisie incomplète", screen.SSPanel3.Amount},
        {{"29/02/1900", "Après", "9"}, "Date incorrecte", screen.SSPanel3.Date},
        {{"1x/05/2004", "Après", "9"}, "Date incorrecte", screen.SSPanel3.Date},
        {{"17/06/2008", "Après", QString(400, '9')}, "Montant incorrect", screen.SSPanel3.Amount},
    };
    for (const int action : {F_Dep::New, F_Dep::Modify}) {
        Click(screen.Crecettes[action]);
        for (const auto& row : refused) {
            FillPanel(screen, row.entry[0], row.entry[1], row.entry[2]);
            ExpectRefusal(row.reason);
            Accept(screen);
            EXPECT_EQ(Shown(screen), "entry");
            EXPECT_TRUE(row.focused.hasFocus()) << qPrintable(row.entry.join('|'));
            EXPECT_EQ(Entry(screen), row.entry); // still there to be corrected
            EXPECT_EQ(other.Run("update Presta set prix = 1"), 0) << "the lock was kept";
        }
        screen.SSPanel3.Date.clear();
        Type(screen.SSPanel3.Date, "31062008"); // refused on a click, too, which doesn't move the focus
        ExpectRefusal("saisie incomplète");
        Accept(screen);
        EXPECT_EQ(screen.SSPanel3.Date.text(), "");
        Click(screen.SSPanel3.Image2[EntryPanel::Cancel]);
    }
    EXPECT_EQ(desk.BeepCount(), 2);
    EXPECT_EQ(Stored(), QStringList("17/06/2008|6|Avant|7"));
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", "17/06/2008", " Avant", "7 "}));
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(screen.Label5.text(), "   7.00");
}

// Both are stored but can't be summed. A stored entry must not be offered for saving again.
TEST_F(Expenses, AreNotSavedTwiceWhenTheirSumOverflows)
{
    auto& screen = OpenScreen();
    AddExpense(screen, "17/06/2008", "Un", QString(308, '9'));
    Click(screen.Crecettes[F_Dep::New]);
    FillPanel(screen, "17/06/2008", "Deux", QString(308, '9'));
    ExpectSaved("Enregistrement terminé");
    ExpectRefusal("Erreur d'exécution '6' :\nDépassement de capacité", "ZEP Lumo");
    Accept(screen);
    EXPECT_EQ(practice.Ask("select count(num) from Recettes").Long(), 2);
}

TEST_F(Expenses, AreChangedInPlace)
{
    practice.Expense({.montant = 1, .objet = "Premier"});
    practice.Expense({.montant = 2, .objet = "Second"});
    practice.Expense({.montant = 3, .objet = "Troisième"});
    auto& screen = OpenScreen();

    Press(screen.Grid1, Qt::Key_Down);
    Press(screen.Grid1, Qt::Key_Return);
    ASSERT_EQ(Shown(screen), "entry");
    EXPECT_EQ(screen.SSPanel3.SSPanel2.Caption(), "MODIFICATION");
    EXPECT_EQ(Entry(screen), QStringList({"17/06/2008", "Second", "2"}));
    FillPanel(screen, "01/11/2007", "Seconde fois", "2.50");
    screen.FillExpenses(core::QueryText); // the list is refilled behind the panel,
    screen.Grid1.SetRow(2);               // and another row is clicked: the same expense is edited
    screen.Grid1_Click();
    ExpectSaved("Enregistrement terminé");
    Accept(screen);

    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(Stored(),
              QStringList({"17/06/2008|6|Premier|1", "01/11/2007|11|Seconde fois|2.5", "17/06/2008|6|Troisième|3"}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", "01/11/2007", " Seconde fois", "2.50 "}));
    EXPECT_EQ(screen.Grid1.Rows(), 3);
    EXPECT_EQ(screen.Label5.text(), "   6.50");

    practice.Write("Update Recettes set montant = 50 where objet = 'Premier'");
    DoubleClick(screen.Grid1, 0);
    EXPECT_EQ(Entry(screen).last(), "50"); // the current value, as written by another program
    FillPanel(screen, "01/11/2007", "Abandonné", "99");
    Click(screen.SSPanel3.Image2[EntryPanel::Cancel]);
    EXPECT_EQ(Stored().value(0), "17/06/2008|6|Premier|50");
}

TEST_F(Expenses, AreDeletedOneByOneUntilNoneIsLeft)
{
    for (const char* object : {"A", "B", "C"})
        practice.Expense({.montant = 5, .objet = object});
    auto& screen = OpenScreen();

    Click(screen.Grid1, 1);
    Delete(screen, 2, Answer::No);
    EXPECT_EQ(Stored().size(), 3);
    Delete(screen, 2);
    EXPECT_EQ(Stored(), QStringList({"17/06/2008|6|A|5", "17/06/2008|6|C|5"}));
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"3", "17/06/2008", " C", "5 "}))
        << "numbered anew by the next selection";
    EXPECT_EQ(screen.Grid1.Row(), 0);
    EXPECT_EQ(screen.Label5.text(), "   10.00");
    Delete(screen, 1);
    Delete(screen, 1);
    EXPECT_EQ(Stored(), QStringList());
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(RowOf(screen.Grid1, 0).join("") + screen.Label5.text(), "");
    EXPECT_FALSE(screen.Grid1.isEnabled());
    Click(screen.Crecettes[F_Dep::Modify]); // nothing to change or delete
    Click(screen.Crecettes[F_Dep::Remove]);
    EXPECT_EQ(Shown(screen), "list");

    AddExpense(screen, "17/06/2008", "D", "100");
    EXPECT_TRUE(screen.Grid1.isEnabled());
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", "17/06/2008", " D", "100 "}));
    AddExpense(screen, "17-06/20002008", "E", "-100");
    EXPECT_EQ(screen.Grid1.Text(1, F_Dep::Date), "17/06/2008");
    EXPECT_EQ(screen.Label5.text(), ""); // no total of zero
    Delete(screen, 1);                   // a row that this screen has added
    EXPECT_EQ(Stored(), QStringList("17/06/2008|6|E|-100"));
    EXPECT_EQ(screen.Label5.text(), " -  100.00");
}

// However an expense deleted by another program is reached, its line is removed and no other expense is touched.
TEST_F(Expenses, AreUntouchedWhenAnotherOneWasDeleted)
{
    practice.Expense({.montant = 1, .objet = "Premier"});
    dao::Key gone[3];
    for (dao::Key& each : gone)
        each = practice.Expense({.montant = 2, .objet = "Parti"});
    practice.Expense({.montant = 4, .objet = "Dernier"});
    auto& screen = OpenScreen();

    DoubleClick(screen.Grid1, 1); // deleted while the panel is open
    practice.Remove("Recettes", gone[0]);
    FillPanel(screen, "17/06/2008", "Écrasé", "9");
    ExpectGone();
    Accept(screen);
    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(screen.Grid1.Rows(), 4);

    practice.Remove("Recettes", gone[1]);
    ExpectGone(); // and before it opens
    DoubleClick(screen.Grid1, 1);
    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(screen.Grid1.Rows(), 3);

    practice.Remove("Recettes", gone[2]);
    DoubleClick(screen.Grid1, 0); // the first one is the current record now
    Press(screen, Qt::Key_Escape);
    Click(screen.Grid1, 1);
    ExpectDeletion(2);
    ExpectGone();
    Click(screen.Crecettes[F_Dep::Remove]);
    EXPECT_EQ(Stored(), QStringList({"17/06/2008|6|Premier|1", "17/06/2008|6|Dernier|4"}));
    EXPECT_EQ(tests::ColumnOf(screen.Grid1, F_Dep::Object), QStringList({"Premier", "Dernier"}));
    EXPECT_EQ(screen.Label5.text(), "   5.00");
}

TEST_F(Expenses, AreSelectedByDayAndByPeriod)
{
    for (const char* day : {"30/06/2008", "29/02/2008", "31/12/2007", "01/01/2008", "29/02/2008"})
        practice.Expense({.day = day, .montant = 10});
    auto& screen = OpenScreen();
    EXPECT_EQ(RowOf(screen.Grid1, 0).join("") + screen.Label5.text(), ""); // nothing today
    const auto days = [&] { return tests::ColumnOf(screen.Grid1, F_Dep::Date); };

    tests::AcceptDay(screen.Dates, "29/02/2008");
    EXPECT_EQ(Shown(screen), "list");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Dépenses du 29/02/2008");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_TRUE(screen.Grid1.isEnabled());
    const QStringList listed{"01/01/2008", "29/02/2008", "29/02/2008", "30/06/2008"};
    tests::AcceptPeriod(screen.Dates, "01/01/2008", "30/06/2008");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Dépenses du 01/01/2008 au 30/06/2008");
    EXPECT_EQ(days(), listed); // both ends, in the order of the days

    ExpectRefusal("Dates inversées", "ZEP Lumo");
    tests::AcceptPeriod(screen.Dates, "17/06/2008", "15/06/2008");
    EXPECT_EQ(Shown(screen), "dates");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Dépenses du 17/06/2008 au 15/06/2008"); // the refused one shows
    EXPECT_EQ(core::ConfigLines[1], "15/06/2008");
    for (const int cancel : {PeriodChooser::CancelDay, PeriodChooser::CancelPeriod}) {
        tests::ChooseDates(screen.Dates);
        screen.Dates.SSTab2.setCurrentIndex(cancel == PeriodChooser::CancelPeriod);
        Click(screen.Dates.Image2[cancel]);
        EXPECT_EQ(Shown(screen), "list");
        EXPECT_TRUE(screen.Grid1.isEnabled());
        EXPECT_EQ(days(), listed);
    }
    tests::ChooseDates(screen.Dates);
    Press(screen.Dates.Text1[PeriodChooser::First], Qt::Key_Escape);
    EXPECT_EQ(Shown(screen), "list");

    tests::AcceptPeriod(screen.Dates, "30/06/2008", "29/06/2008"); // one day before is the empty period
    EXPECT_EQ(days().join("") + screen.Label5.text(), "");
    EXPECT_FALSE(screen.Grid1.isEnabled());
    Click(screen.Crecettes[F_Dep::Modify]);
    EXPECT_EQ(Shown(screen), "list");
    Press(screen, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    Press(screen, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(Expenses, ShowTheirActionsInTheLanguageOfThePractice)
{
    auto& screen = OpenScreen();
    const auto tips = [&screen] {
        QStringList texts;
        for (int action = F_Dep::New; action <= F_Dep::Quit; ++action) {
            Q_EMIT screen.Crecettes[action].MouseOver();
            texts << screen.Bulle.text();
        }
        return texts;
    };
    EXPECT_EQ(tips(), QStringList({"Nouveau", "Modifier", "Supprimer", "Sélection", "Quitter"}));
    core::LanguageMode = core::Arabic;
    EXPECT_EQ(tips(), QStringList({"جـديـد", "مـراجـعة", "حـذف", "Sélection", "مـغادرة"}));
}
