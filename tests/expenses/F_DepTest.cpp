#include "expenses/F_Dep.h"

#include "core/configuration.h"
#include "core/globals.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/Dates.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rows.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

using core::PeriodChooser;
using expenses::EntryPanel;
using expenses::F_Dep;
using forms::Answer;
using forms::Icon;
using tests::RowOf;

namespace {

class Expenses : public testing::Test {
protected:
    F_Dep& OpenScreen()
    {
        practice.Open();
        return desk.Open<F_Dep>();
    }

    static void ListDay(F_Dep& screen, const QString& day)
    {
        Click(screen.Crecettes[F_Dep::Select]);
        tests::AcceptDay(screen.Dates, day);
    }

    static void ListPeriod(F_Dep& screen, const QString& first, const QString& last)
    {
        if (!screen.Dates.isVisible())
            Click(screen.Crecettes[F_Dep::Select]);
        tests::AcceptPeriod(screen.Dates, first, last);
    }

    static void FillPanel(F_Dep& screen, const QString& date, const QString& object, const QString& amount)
    {
        screen.SSPanel3.Date.setText(date);
        screen.SSPanel3.Object.setText(object);
        screen.SSPanel3.Amount.setText(amount);
    }

    void Save(F_Dep& screen)
    {
        desk.ExpectMessage("Enregistrement terminé", Icon::Information, "ZEP Lumo");
        Click(screen.SSPanel3.Image2[EntryPanel::Accept]);
    }

    void AddExpense(F_Dep& screen, const QString& date, const QString& object, const QString& amount)
    {
        Click(screen.Crecettes[F_Dep::New]);
        FillPanel(screen, date, object, amount);
        Save(screen);
    }

    void Delete(F_Dep& screen, int asked, Answer answer = Answer::Yes)
    {
        desk.ExpectMessage("Confirmer supression de ligne N° " + QString::number(asked), Icon::Question, "Confirmation",
                           answer);
        Click(screen.Crecettes[F_Dep::Remove]);
    }

    void ExpectGone()
    {
        desk.ExpectMessage("Cette ligne n'existe plus : elle a été supprimée entre-temps.", Icon::Critical,
                           "ATTENTION");
    }

    static bool IsBrowsing(F_Dep& screen)
    {
        return PicturesShow(screen) && !screen.Dates.SSTab2.isVisible() && !screen.SSPanel3.isVisible();
    }
    static bool IsChoosing(F_Dep& screen)
    {
        return !PicturesShow(screen) && screen.Dates.SSTab2.isVisible() && !screen.SSPanel3.isVisible() &&
               !screen.Grid1.isEnabled();
    }
    static bool IsEntering(F_Dep& screen)
    {
        return !PicturesShow(screen) && !screen.Dates.SSTab2.isVisible() && screen.SSPanel3.isVisible() &&
               !screen.Grid1.isEnabled();
    }

    QStringList Stored()
    {
        return tests::RowsOf(practice, "select Date, MM, objet, montant from Recettes order by num");
    }

    tests::Practice practice;
    ScriptedDesk desk;

private:
    static bool PicturesShow(F_Dep& screen)
    {
        EXPECT_TRUE(screen.Crecettes[F_Dep::Quit].isVisible()); // visible in every mode
        const bool shown = screen.Crecettes[F_Dep::New].isVisible();
        for (const int picture : {F_Dep::Modify, F_Dep::Remove, F_Dep::Select})
            EXPECT_EQ(screen.Crecettes[picture].isVisible(), shown);
        return shown;
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
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_TRUE(screen.Grid1.hasFocus());
    ASSERT_EQ(screen.Grid1.Rows(), 3);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", "17/06/2008", " Coton", "123456789.5 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", "17/06/2008", "", "0.25 "}));
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({"3", "17/06/2008", " Sans montant", ""}));
    EXPECT_EQ(screen.Label5.text(), " 123 456 789.75");
    EXPECT_GE(screen.Label5.width(), screen.Label5.NeededWidth());
    for (int field = PeriodChooser::Day; field <= PeriodChooser::Last; ++field)
        EXPECT_EQ(screen.Dates.Text1[field].text(), "17/06/2008");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());

    DoubleClick(screen.Grid1, 2); // an expense with Null amount and object can be edited
    EXPECT_EQ(screen.SSPanel3.Amount.text(), "");
    Press(screen.SSPanel3.Amount, Qt::Key_Escape);
    DoubleClick(screen.Grid1, 1);
    EXPECT_EQ(screen.SSPanel3.Object.text(), "");
}

TEST_F(Expenses, AreEnteredByKeyboardAndListedLast)
{
    practice.Expense({.montant = 100});
    auto& screen = OpenScreen();
    ListPeriod(screen, "01/06/2008", "30/06/2008");

    Press(screen.Grid1, Qt::Key_Insert);
    ASSERT_TRUE(IsEntering(screen));
    EXPECT_EQ(screen.SSPanel3.SSPanel2.Caption(), "NOUVELLE DEPENSE");
    EXPECT_EQ(screen.SSPanel3.Date.text(), "30/06/2008"); // as the period left it
    EXPECT_EQ(screen.SSPanel3.Object.text() + screen.SSPanel3.Amount.text(), "");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    ASSERT_TRUE(screen.SSPanel3.Date.hasFocus());
    Type(screen.SSPanel3.Date, "05022007");
    Press(screen.SSPanel3.Date, Qt::Key_Return);
    ASSERT_TRUE(screen.SSPanel3.Object.hasFocus());
    Type(screen.SSPanel3.Object, " Gants d'été ");
    Press(screen.SSPanel3.Object, Qt::Key_Return);
    ASSERT_TRUE(screen.SSPanel3.Amount.hasFocus());
    Type(screen.SSPanel3.Amount, "-12x34,5,");
    desk.ExpectMessage("Enregistrement terminé", Icon::Information, "ZEP Lumo");
    Press(screen.SSPanel3.Amount, Qt::Key_Return);

    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(Stored().value(1), "05/02/2007|2|Gants d'été|-1234.5");
    ASSERT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", "05/02/2007", " Gants d'été", "-1234.5 "}));
    EXPECT_EQ(screen.Label5.text(), " - 1 134.50");

    Click(screen.Grid1, 1); // the new row can be changed at once
    Press(screen.Grid1, Qt::Key_F2);
    EXPECT_EQ(screen.SSPanel3.Amount.text(), "-1234.5");
    Press(screen.SSPanel3.Amount, Qt::Key_Escape);
    ListPeriod(screen, "01/06/2008", "30/06/2008"); // and isn't in this period
    EXPECT_EQ(screen.Grid1.Rows(), 1);
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
    ListDay(screen, "03/03/2008");
    EXPECT_EQ(core::ConfigLines[0], "03/03/2008");
    EXPECT_EQ(proposed(), core::LetterheadField(2).trimmed());
    ListPeriod(screen, "01/01/2008", "31/01/2008");
    EXPECT_EQ(core::ConfigLines[0], "01/01/2008");
    EXPECT_EQ(proposed(), "31/01/2008");
}

TEST_F(Expenses, AreRefusedWithBlankFields)
{
    auto& screen = OpenScreen();
    Click(screen.Crecettes[F_Dep::New]);
    forms::TextBox* const fields[] = {&screen.SSPanel3.Date, &screen.SSPanel3.Object, &screen.SSPanel3.Amount};
    for (forms::TextBox* blank : fields) {
        FillPanel(screen, "17/06/2008", "Coton", "5");
        blank->setText("  ");
        desk.ExpectMessage("saisie incomplète", Icon::Critical, "ATTENTION");
        Click(screen.SSPanel3.Image2[EntryPanel::Accept]);
        EXPECT_TRUE(IsEntering(screen));
        EXPECT_TRUE(blank->hasFocus());
    }
    // An invalid date is also refused on a click, which doesn't move the focus.
    FillPanel(screen, "", "Coton", "5");
    Type(screen.SSPanel3.Date, "31062008");
    desk.ExpectMessage("saisie incomplète", Icon::Critical, "ATTENTION");
    Click(screen.SSPanel3.Image2[EntryPanel::Accept]);
    EXPECT_EQ(desk.BeepCount(), 1);
    EXPECT_EQ(screen.SSPanel3.Date.text(), "");
    EXPECT_EQ(Stored(), QStringList());
}

TEST_F(Expenses, AreRefusedWithAnInvalidDateAndKeepTheRow)
{
    practice.Expense({.day = "17/06/2008", .montant = 7, .objet = "Avant"});
    auto& screen = OpenScreen();
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    for (const int action : {F_Dep::New, F_Dep::Modify}) {
        Click(screen.Crecettes[action]);
        for (const char* date : {"12-05-2004", "29/02/1900", "12/05x/2004"}) {
            FillPanel(screen, date, "Après", "9");
            desk.ExpectMessage("Date incorrecte", Icon::Critical, "ATTENTION");
            Click(screen.SSPanel3.Image2[EntryPanel::Accept]);
            EXPECT_TRUE(IsEntering(screen)) << date;
            EXPECT_TRUE(screen.SSPanel3.Date.hasFocus());
            EXPECT_EQ(screen.SSPanel3.Object.text(), "Après"); // the entry is still there to be corrected
            EXPECT_EQ(Stored(), QStringList("17/06/2008|6|Avant|7")) << date;
            EXPECT_EQ(other.Run("update Presta set prix = 1"), 0) << "the lock was kept";
        }
        FillPanel(screen, "17/06/2008", "Après", QString(400, '9'));
        desk.ExpectMessage("Montant incorrect", Icon::Critical, "ATTENTION");
        Click(screen.SSPanel3.Image2[EntryPanel::Accept]);
        EXPECT_EQ(Stored(), QStringList("17/06/2008|6|Avant|7"));
        EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", "17/06/2008", " Avant", "7 "}));
        Click(screen.SSPanel3.Image2[EntryPanel::Cancel]);
    }
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
    desk.ExpectMessage("Enregistrement terminé", Icon::Information, "ZEP Lumo");
    desk.ExpectMessage("Erreur d'exécution '6' :\nDépassement de capacité", Icon::Critical, "ZEP Lumo");
    Click(screen.SSPanel3.Image2[EntryPanel::Accept]);
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
    ASSERT_TRUE(IsEntering(screen));
    EXPECT_EQ(screen.SSPanel3.SSPanel2.Caption(), "MODIFICATION");
    EXPECT_EQ(screen.SSPanel3.Date.text(), "17/06/2008");
    EXPECT_EQ(screen.SSPanel3.Object.text(), "Second");
    EXPECT_EQ(screen.SSPanel3.Amount.text(), "2");
    FillPanel(screen, "01/11/2007", "Seconde fois", "2.50");
    screen.FillExpenses(core::QueryText); // the list is refilled behind the panel,
    screen.Grid1.SetRow(2);               // and another row is clicked: the same expense is edited
    screen.Grid1_Click();
    Save(screen);

    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(Stored(),
              QStringList({"17/06/2008|6|Premier|1", "01/11/2007|11|Seconde fois|2.5", "17/06/2008|6|Troisième|3"}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", "01/11/2007", " Seconde fois", "2.50 "}));
    EXPECT_EQ(screen.Grid1.Rows(), 3);
    EXPECT_EQ(screen.Label5.text(), "   6.50");

    DoubleClick(screen.Grid1, 0);
    FillPanel(screen, "01/11/2007", "Abandonné", "99");
    Click(screen.SSPanel3.Image2[EntryPanel::Cancel]);
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(Stored().value(0), "17/06/2008|6|Premier|1");
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

    desk.ExpectMessage("Confirmer supression de ligne N° 1", Icon::Question, "Confirmation", Answer::Yes);
    Press(screen.Grid1, Qt::Key_Delete);
    Delete(screen, 1);
    EXPECT_EQ(Stored(), QStringList());
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"", "", "", ""}));
    EXPECT_FALSE(screen.Grid1.isEnabled());
    EXPECT_EQ(screen.Label5.text(), "");

    Click(screen.Crecettes[F_Dep::Modify]); // nothing to change or delete
    Click(screen.Crecettes[F_Dep::Remove]);
    EXPECT_TRUE(IsBrowsing(screen));

    AddExpense(screen, "17/06/2008", "D", "1");
    EXPECT_TRUE(screen.Grid1.isEnabled());
    EXPECT_EQ(screen.Grid1.Rows(), 1);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", "17/06/2008", " D", "1 "}));
    Delete(screen, 1); // a row that this screen has added
    EXPECT_EQ(Stored(), QStringList());
}

// However an expense deleted by another program is reached, its line is removed and no other expense is touched.
TEST_F(Expenses, AreUntouchedWhenAnotherOneWasDeleted)
{
    const dao::Key first = practice.Expense({.montant = 1, .objet = "Premier"});
    dao::Key gone[3];
    for (dao::Key& each : gone)
        each = practice.Expense({.montant = 2, .objet = "Parti"});
    practice.Expense({.montant = 4, .objet = "Dernier"});
    auto& screen = OpenScreen();

    DoubleClick(screen.Grid1, 1); // deleted while the panel is open
    practice.Remove("Recettes", gone[0]);
    FillPanel(screen, "17/06/2008", "Écrasé", "9");
    ExpectGone();
    Click(screen.SSPanel3.Image2[EntryPanel::Accept]);
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid1.Rows(), 4);

    practice.Remove("Recettes", gone[1]);
    ExpectGone(); // and before it opens
    DoubleClick(screen.Grid1, 1);
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid1.Rows(), 3);

    practice.Remove("Recettes", gone[2]);
    DoubleClick(screen.Grid1, 0); // the first one is the current record now
    Press(screen, Qt::Key_Escape);
    Click(screen.Grid1, 1);
    desk.ExpectMessage("Confirmer supression de ligne N° 2", Icon::Question, "Confirmation", Answer::Yes);
    ExpectGone();
    Click(screen.Crecettes[F_Dep::Remove]);
    EXPECT_EQ(Stored(), QStringList({"17/06/2008|6|Premier|1", "17/06/2008|6|Dernier|4"}));
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_EQ(screen.Grid1.Text(1, F_Dep::Object), " Dernier");
    EXPECT_EQ(screen.Label5.text(), "   5.00");

    practice.Write("Update Recettes set montant = 50 where num = " + QString::number(first));
    DoubleClick(screen.Grid1, 0); // the current values, as written by another program, are edited
    EXPECT_EQ(screen.SSPanel3.Amount.text(), "50");
}

TEST_F(Expenses, AreSelectedByDayAndByPeriod)
{
    for (const char* day : {"30/06/2008", "29/02/2008", "31/12/2007", "01/01/2008", "29/02/2008"})
        practice.Expense({.day = day, .montant = 10});
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.Grid1.Text(0, F_Dep::Number), ""); // nothing today
    EXPECT_EQ(screen.Label5.text(), "");

    Press(screen.Grid1, Qt::Key_F4);
    ASSERT_TRUE(IsChoosing(screen));
    ASSERT_TRUE(screen.Dates.Text1[PeriodChooser::Day].hasFocus());
    Type(screen.Dates.Text1[PeriodChooser::Day], "29022008");
    Press(screen.Dates.Text1[PeriodChooser::Day], Qt::Key_Return);
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Dépenses du 29/02/2008");
    EXPECT_EQ(screen.Grid1.Rows(), 2);
    EXPECT_TRUE(screen.Grid1.isEnabled());

    ListPeriod(screen, "01/01/2008", "30/06/2008");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Dépenses du 01/01/2008 au 30/06/2008");
    ASSERT_EQ(screen.Grid1.Rows(), 4); // both ends, in the order of the days
    EXPECT_EQ(screen.Grid1.Text(0, F_Dep::Date), "01/01/2008");
    EXPECT_EQ(screen.Grid1.Text(3, F_Dep::Date), "30/06/2008");
    ListPeriod(screen, "29/02/2008", "29/02/2008");
    EXPECT_EQ(screen.Grid1.Rows(), 2);

    ListPeriod(screen, "30/06/2008", "29/06/2008"); // one day before is the empty period
    EXPECT_TRUE(IsBrowsing(screen));
    EXPECT_EQ(screen.Grid1.Text(0, F_Dep::Number), "");
    EXPECT_EQ(screen.Label5.text(), "");
    EXPECT_FALSE(screen.Grid1.isEnabled());
    Click(screen.Crecettes[F_Dep::Modify]);
    EXPECT_TRUE(IsBrowsing(screen));
}

TEST_F(Expenses, KeepTheListWhenTheChoiceIsRefusedOrCancelled)
{
    practice.Expense({.montant = 10});
    auto& screen = OpenScreen();

    desk.ExpectMessage("Dates inversées", Icon::Critical, "ZEP Lumo");
    ListPeriod(screen, "17/06/2008", "15/06/2008");
    EXPECT_TRUE(IsChoosing(screen));
    EXPECT_EQ(screen.SSPanel1.Caption(), "Dépenses du 17/06/2008 au 15/06/2008"); // the refused one shows
    EXPECT_EQ(core::ConfigLines[1], "15/06/2008");

    for (const int cancel : {PeriodChooser::CancelDay, PeriodChooser::CancelPeriod}) {
        screen.Dates.SSTab2.setCurrentIndex(cancel == PeriodChooser::CancelDay ? PeriodChooser::DayPage
                                                                               : PeriodChooser::PeriodPage);
        Click(screen.Dates.Image2[cancel]);
        EXPECT_TRUE(IsBrowsing(screen));
        EXPECT_TRUE(screen.Grid1.isEnabled());
        EXPECT_EQ(screen.Grid1.Text(0, F_Dep::Number), "1");
        Click(screen.Crecettes[F_Dep::Select]);
    }
    Press(screen.Dates.Text1[PeriodChooser::First], Qt::Key_Escape);
    EXPECT_TRUE(IsBrowsing(screen));
    Press(screen.Grid1, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(Expenses, ShowNoTotalWhenTheirSumIsZero)
{
    practice.Expense({.montant = 100});
    practice.Expense({.montant = -100});
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.Label5.text(), "");
    AddExpense(screen, "17/06/2008", "Retour", "-123456789.5");
    EXPECT_EQ(screen.Label5.text(), " -123 456 789.50");
    EXPECT_GE(screen.Label5.width(), screen.Label5.NeededWidth());
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
