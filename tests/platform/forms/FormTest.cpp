#include "Sheet.h"
#include "platform/basic/RuntimeError.h"
#include "support/ScriptedDesk.h"

#include <QScreen>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

struct Screen : testing::Test {
    ScriptedDesk desk;
};

} // namespace

TEST_F(Screen, IsClosedByItsCloseBoxAndUnloadOnlyAndMayRefuse)
{
    auto& sheet = desk.Open<Sheet>();
    QSignalSpy unloaded(&sheet, &forms::Form::Unloaded);
    Press(sheet.text, Qt::Key_Escape);
    Press(sheet.grid, Qt::Key_Escape);
    EXPECT_EQ(sheet.escapes, 2);

    sheet.staysOpen = true;
    sheet.close();
    sheet.Unload();
    sheet.reject();
    EXPECT_TRUE(sheet.isVisible() && sheet.IsLoaded());
    EXPECT_EQ(unloaded.count(), 0);

    sheet.staysOpen = false;
    EXPECT_TRUE(sheet.close());
    EXPECT_FALSE(sheet.isVisible() || sheet.IsLoaded());
    sheet.Unload();
    EXPECT_EQ(unloaded.count(), 1);
}

TEST_F(Screen, IsLoadedOnceForEachShowingAndMayCloseItselfMeanwhile)
{
    Sheet sheet;
    int loads = 0;
    sheet.loading = [&] { ++loads; };
    sheet.Load();
    sheet.Load();
    EXPECT_EQ(loads, 1);
    EXPECT_GT(sheet.width(), 200); // its natural size is known before it shows
    sheet.Unload();
    sheet.loading = [] { throw basic::RuntimeError(basic::Error::UnknownColumn); };
    EXPECT_EQ(ErrorOf([&] { sheet.Load(); }), Error::UnknownColumn);
    EXPECT_FALSE(sheet.IsLoaded());

    sheet.loading = [&] { sheet.Unload(); };
    desk.WhenModal<Sheet>([](Sheet&) { ADD_FAILURE() << "it must not come up"; });
    desk.ShowModal(sheet);
    EXPECT_FALSE(sheet.isVisible());
}

TEST_F(Screen, EnterPressesTheFocusedButtonAndACommandItsPictureFromAnyControl)
{
    auto& sheet =
        desk.Open<Sheet>([](Sheet& made) { Dress(made.picture, "print", " Imprimer ", forms::Command::Print); });
    QSignalSpy pressed(&sheet.button, &QPushButton::clicked);
    QSignalSpy clicks(&sheet.picture, &QAbstractButton::clicked);
    EXPECT_EQ(sheet.picture.toolTip(), "Imprimer (Ctrl+P)");
    EXPECT_EQ(sheet.picture.accessibleName(), "Imprimer");
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        for (QWidget* control : std::initializer_list<QWidget*>{&sheet.text, &sheet.grid})
            Press(*control, key, modifiers);
        return clicks.count();
    };
    EXPECT_EQ(press(Qt::Key_Return) + pressed.count(), 0);
    Press(sheet.button, Qt::Key_Return);
    EXPECT_EQ(pressed.count(), 1);
    Press(sheet.picture, Qt::Key_Enter, Qt::KeypadModifier);
    Press(sheet.picture, Qt::Key_Space);
    EXPECT_EQ(press(Qt::Key_P, Qt::ControlModifier), 4);
    sheet.picture.setEnabled(false);
    EXPECT_EQ(press(Qt::Key_P, Qt::ControlModifier), 4);
    sheet.picture.setEnabled(true);
    sheet.picture.hide();
    EXPECT_EQ(press(Qt::Key_P, Qt::ControlModifier), 4);
}

TEST_F(Screen, AcceptsWhatIsOpenBeforeTheScreen)
{
    using forms::Command;
    forms::Panel panel{"SSPanel3"};
    forms::Picture accept{"Image2"}, cancel{"Image3"};
    auto& sheet = desk.Open<Sheet>([&](Sheet& made) {
        Dress(made.picture, "save", "Enregistrer et quitter", {Command::Accept, Command::Leave});
        Dress(accept, "accept", "Valider", Command::Accept);
        Dress(cancel, "cancel", "Annuler");
        panel.setProperty("floating", true);
        forms::Inside(panel, forms::Row{accept, cancel});
        panel.setParent(&made);
    });
    EXPECT_EQ(sheet.picture.toolTip(), "Enregistrer et quitter (Ctrl+S, Ctrl+W)");
    QSignalSpy ofPanel(&accept, &QAbstractButton::clicked);
    QSignalSpy ofScreen(&sheet.picture, &QAbstractButton::clicked);
    panel.show();
    Press(cancel, Qt::Key_S, Qt::ControlModifier); // comes after the one to accept, before the screen's
    Press(cancel, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(ofPanel.count(), 1);
    EXPECT_EQ(ofScreen.count(), 1);
    panel.hide();
    Press(sheet.text, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ofScreen.count(), 2);
    panel.setParent(nullptr);
}

TEST_F(Screen, OpensInsideTheFreeAreaOfItsScreen)
{
    const QRect area = forms::Form::OpeningScreen()->availableGeometry();
    auto& sheet = desk.Open<Sheet>([](Sheet& made) {
        made.grid.SetUsualRows(500);
        made.loading = [&made] { made.Centre(); };
    });
    EXPECT_TRUE(area.contains(sheet.frameGeometry())) << sheet.frameGeometry().height();
    EXPECT_GT(sheet.height(), area.height() - 40); // as tall as the screen allows
    EXPECT_LE(sheet.button.geometry().bottom(), sheet.height());
    sheet.Unload();

    auto& table = desk.Open<Sheet>([](Sheet& made) {
        made.grid.SetUsualRows(12);
        made.loading = [&made] { made.Centre(); };
    });
    EXPECT_NEAR(table.geometry().center().x(), area.center().x(), 3);
    EXPECT_NEAR(table.geometry().center().y(), area.center().y(), 18);
    table.grid.SetRows(12);
    support::ProcessEvents();
    EXPECT_LE(table.grid.visualRect(table.grid.model()->index(11, 0)).bottom(), table.grid.viewport()->rect().bottom());
}

TEST_F(Screen, ScrollsContentsThatAreLargerThanItsScreen)
{
    const QRect area = forms::Form::OpeningScreen()->availableGeometry();
    const auto inView = [](const QWidget& control) { return control.visibleRegion().boundingRect() == control.rect(); };
    auto& sheet = desk.Open<Sheet>();
    forms::Panel floating{"SSPanel1", "Correction"};
    floating.setParent(&sheet);
    floating.hide();
    sheet.button.setFocus();
    sheet.grid.setMinimumHeight(2 * area.height()); // grows while it is open
    support::ProcessEvents();
    EXPECT_TRUE(area.contains(sheet.frameGeometry())) << sheet.frameGeometry().height();
    EXPECT_EQ(sheet.focusWidget(), &sheet.button);
    EXPECT_TRUE(inView(sheet.text)); // its beginning, whatever has the focus

    sheet.date.setFocus();
    sheet.button.setFocus();
    EXPECT_TRUE(inView(sheet.button));
    EXPECT_FALSE(inView(sheet.text));

    EXPECT_FALSE(floating.isVisible());
    EXPECT_EQ(floating.parentWidget(), sheet.button.parentWidget());
    floating.setParent(nullptr);
}

TEST_F(Screen, TabFollowsTheLayout)
{
    auto& sheet = desk.Open<Sheet>();
    sheet.text.setFocus();
    for (QWidget* next :
         std::initializer_list<QWidget*>{&sheet.date, &sheet.amount, &sheet.picture, &sheet.grid, &sheet.button}) {
        Press(*sheet.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(sheet.focusWidget(), next) << qPrintable(sheet.focusWidget()->objectName());
    }
}

TEST_F(Screen, MayDestroyAPanelBeforeItsControls)
{
    struct ReversedOrder : forms::Form {
        ReversedOrder() : Form("ReversedOrder")
        {
            SetContent(
                forms::Column{forms::Inside(panel, forms::Column{forms::Titled("Cadre", forms::Row{inner})}), tabs});
            forms::AddPage(tabs, "Page", forms::Column{onPage});
        }
        forms::TextBox inner{"Text1"};
        forms::TextBox onPage{"Text2"};
        forms::Panel panel{"SSPanel1", "Correction"};
        forms::TabStrip tabs{"SSTab1"};
    };
    desk.Open<ReversedOrder>();
}
