// How many keys the daily tasks take on the real program; typed texts aren't counted.
#include "menu.h"

#include "support/MainWindow.h"
#include "support/Reports.h"

#include <QDir>

namespace {

/// Keys for the main window and for each screen in the order in which they come up; a word after "'" is typed. Each
/// message is answered by one more key.
struct Task {
    const char* name;
    const char* main;
    QStringList screens;
    QString message;
    int keys;
};

const Task Tasks[] = {
    {"cash of today", "F7", {"Return", ""}, "", 2},
    {"settle an act",
     "F7",
     {"Return", "Ctrl+PgDown Ctrl+PgDown Return 'p Return '1500 Ctrl+S"},
     "Correction enregistrée",
     8},
    {"an expense", "F9", {"Ins '16062008 Return 'Coton Return '5 Return"}, "Enregistrement terminé", 6},
    {"a patient by name", "F5", {"", "Ctrl+PgDown 'ben Return Return"}, "", 4},
    {"print the day", "F7", {"Return", "Ctrl+P", ""}, "", 3},
    {"list of all units", "F12", {"Return Ctrl+PgDown Ctrl+PgDown Ctrl+P Up Up Return", ""}, "", 8},
    {"result of the month", "Ctrl+R", {"Ctrl+PgDown '01062008 Return '30062008 Return"}, "", 4},
};

class DailyTasks : public testing::Test {
protected:
    DailyTasks()
    {
        for (const char* name : {"ZEP_R1.RPT", "ZEP_DTAL.RPT"})
            tests::PutTemplate(practice, name);
        practice.Act({});
        practice.Expense({.montant = 10});
        QDir::setCurrent(practice.Folder());
    }
    ~DailyTasks() override { QDir::setCurrent(before); }

    void Play(forms::Form& screen, const QString& script)
    {
        for (const QString& word : script.split(' ', Qt::SkipEmptyParts)) {
            QWidget& focused = screen.focusWidget() != nullptr ? *screen.focusWidget() : screen;
            if (word.startsWith('\''))
                Type(focused, word.mid(1));
            else if (const QKeyCombination keys = QKeySequence(word)[0]; ++pressed > 0)
                Press(focused, keys.key(), keys.keyboardModifiers());
        }
    }

    int Count(core::Form1& main, const Task& task)
    {
        pressed = task.message.isEmpty() ? 0 : 1;
        for (const QString& script : task.screens)
            desk.WhenModal<forms::Form>([this, script](forms::Form& screen) {
                Play(screen, script);
                screen.Unload();
            });
        if (!task.message.isEmpty())
            desk.ExpectMessage(task.message, forms::Icon::Information, "ZEP Lumo");
        Play(main, task.main);
        desk.Verify();
        return pressed;
    }

    const QString before = QDir::currentPath();
    tests::Practice practice;
    ScriptedDesk desk;
    int pressed = 0;
};

} // namespace

TEST_F(DailyTasks, TakeFewKeys)
{
    auto& main = desk.Open<core::Form1>(MenuScreens());
    EXPECT_EQ(Count(main, {"open", "Ctrl+O", {"'6 Return"}, "", 0}), 2);
    for (const Task& task : Tasks)
        EXPECT_EQ(Count(main, task), task.keys) << task.name;
    EXPECT_EQ(tests::RowsOf(practice, "select flag_R, montant from Actes"), QStringList("2|1500"));
    EXPECT_EQ(tests::RowsOf(practice, "select Date, objet, montant from Recettes order by num").last(),
              "16/06/2008|Coton|5");

    pressed = 1;
    desk.ExpectMessage("Veuiller Confirmer Fin de Travail !!", forms::Icon::Question, "ZEP Lumo", forms::Answer::Yes,
                       forms::Buttons::YesNo);
    Play(main, "Ctrl+Q");
    EXPECT_EQ(pressed, 2);
    EXPECT_EQ(desk.EndCode(), 0);
}
