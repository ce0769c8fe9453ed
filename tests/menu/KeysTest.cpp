#include "menu/ScreenStates.h"

#include <QLabel>
#include <QTest>

namespace {

using namespace tests::screens;

class Keys : public EachScreen {
protected:
    /// All that a key may change on a screen.
    QStringList Look(const Form& screen) const
    {
        QStringList look{QString::number(desk.events), screen.IsLoaded() ? "open" : "closed",
                         screen.focusWidget() != nullptr ? screen.focusWidget()->objectName() : ""};
        for (const QWidget* each : screen.findChildren<QWidget*>()) {
            look << each->objectName() + (each->isVisible() ? "+" : "-");
            if (const auto* label = qobject_cast<const QLabel*>(each))
                look << label->text();
            else if (const auto* field = qobject_cast<const QLineEdit*>(each))
                look << field->text();
            else if (const auto* grid = qobject_cast<const forms::Grid*>(each))
                look << QString::number(grid->Row()) + grid->Text(0, 0);
        }
        return look;
    }
};

} // namespace

TEST_F(Keys, ActWhereTheTableSaysAndNowhereElse)
{
    for (const State& state : States) {
        Form& still = Reach(state);
        for (const forms::CommandKeys& row : forms::KeyTable().first(static_cast<std::size_t>(Leave) + 1)) {
            const bool acts = row.command == Help || state.acting.contains(row.command);
            Form& screen = acts ? Reach(state) : still;
            const QStringList unchanged = Look(screen);
            Type(screen, row.keys);
            EXPECT_EQ(Look(screen) != unchanged, acts) << state.name << ", " << row.text;
            if (acts)
                screen.Unload();
        }
        still.Unload();
    }
}

TEST_F(Keys, FieldsSelectAsManyCharactersOnFocusAsTheirRulesSay)
{
    constexpr int whole = 70;
    const struct {
        Form& (*open)(ScriptedDesk&);
        QList<QKeyCombination> before;
        QList<std::pair<const char*, int>> fields;
    } rows[] = {
        {Open<catalogue::J_PROD>, {Change}, {{"Text1(1)", 60}, {"Text1(2)", 60}}},
        {Open<acts::New_Rech>, {Page}, {{"Text2(1)", 40}, {"Text2(2)", 40}}},
        {Open<acts::New_Act>, {Page}, {{"Text1", 10}}},
        {Open<acts::New_Mecano>, {}, {{"Text1(1)", 10}, {"Text1(2)", 10}}},
        {Open<cash::J_CAISSE>, {Page, Page, Change}, {{"Text1", whole}}},
        {Open<cash::F_Inst>, {}, {{"Text1(0)", whole}}},
        {Open<analysis::Mens_Act>, {Date}, {{"Text1", 10}}},
        {Open<acts::F_Sppr>, {Date}, {{"Text1", 10}}},
        {Open<expenses::F_Dep>, {Change}, {{"Text2(0)", whole}, {"Text2(1)", whole}}},
        {Open<planning::Planning>, {Date}, {{"Text5(0)", 10}}},
        {Open<analysis::Chrges>, {}, {{"Text1(1)", 20}, {"Text1(7)", 20}}},
        {Open<analysis::Result>, {}, {{"Text1(0)", 10}}},
    };
    for (const auto& row : rows) {
        Form& screen = Reach({"", row.open, row.before, {}});
        for (const auto& [name, selected] : row.fields) {
            auto& field = *screen.findChild<QLineEdit*>(name);
            screen.setFocus();
            field.setText(QString(whole, '1'));
            field.setFocus();
            EXPECT_EQ(field.selectedText().size(), selected) << screen.objectName().toStdString() << ' ' << name;
        }
        screen.hide();
    }
}
