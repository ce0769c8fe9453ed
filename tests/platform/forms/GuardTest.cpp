#include "platform/forms/Guard.h"

#include "Sheet.h"
#include "platform/basic/RuntimeError.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

using forms::Icon;

namespace {

struct Guard : testing::Test {
    ScriptedDesk desk;
    int closings = 0;

    Guard()
    {
        forms::OnFatalError([this] { ++closings; });
    }
    ~Guard() override { forms::OnFatalError({}); }

    void ExpectFatal(const QString& text) { desk.ExpectMessage(text, Icon::Critical, "ZEP Lumo"); }
};

} // namespace

TEST_F(Guard, ReportsAnUncaughtErrorClosesAndEndsTheProgram)
{
    ExpectFatal("Erreur d'exécution '6' :\nDépassement de capacité");
    bool wentOn = false;
    forms::Guarded([&] {
        forms::Guarded([] { throw basic::RuntimeError(basic::Error::Overflow); });
        forms::MsgBox("le programme est terminé"); // not shown any more
        wentOn = true;
    });
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(desk.EndCode(), 1);
    EXPECT_FALSE(wentOn);
}

TEST_F(Guard, EndsTheProgramEvenWhenClosingFails)
{
    forms::OnFatalError([] { throw basic::RuntimeError(basic::Error::PathAccess); });
    ExpectFatal("Erreur d'exécution '9' :\nL'indice n'appartient pas à la sélection");
    forms::Guarded([] { throw basic::RuntimeError(basic::Error::IndexOutOfRange); });
    EXPECT_EQ(desk.EndCode(), 1);
}

TEST_F(Guard, DropsASecondErrorWhileItReportsOne)
{
    ExpectFatal("Erreur d'exécution '6' :\nDépassement de capacité");
    forms::OnFatalError([this] {
        ++closings;
        forms::Guarded([] { throw basic::RuntimeError(basic::Error::TypeMismatch); });
    });
    forms::Guarded([] { throw basic::RuntimeError(basic::Error::Overflow); });
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(desk.EndCode(), 1);
}

TEST_F(Guard, LetsNoExceptionIntoTheToolkit)
{
    ExpectFatal("Erreur d'exécution '51' :\nErreur interne : vector");
    forms::Guarded([] { throw std::out_of_range("vector"); });
    EXPECT_EQ(desk.EndCode(), 1);
}

TEST_F(Guard, CoversEventHandlersOfAScreen)
{
    auto& sheet = desk.Open<Sheet>();
    sheet.text.KeyPress = [](int&) { throw basic::RuntimeError(basic::Error::TypeMismatch); };
    ExpectFatal("Erreur d'exécution '13' :\nIncompatibilité de type");
    Type(sheet.text, "x");
    EXPECT_EQ(sheet.text.text(), "");
    EXPECT_EQ(desk.EndCode(), 1);
}

TEST_F(Guard, GivesAHandlerTheArgumentsItAccepts)
{
    struct Screen : Sheet {
        QString last;
        void Text1_Change() { last = "changed"; }
    };
    auto& sheet = desk.Open<Screen>();
    QString given;
    int changes = 0;
    forms::On(sheet.text, &QLineEdit::textChanged, sheet, [&](const QString& text) { given = text; });
    forms::On(sheet.text, &QLineEdit::textChanged, sheet, [&] { ++changes; });
    forms::On(sheet.text, &QLineEdit::textChanged, sheet, &Screen::Text1_Change);
    sheet.text.setText("DUPONT");
    EXPECT_EQ(given, "DUPONT");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(sheet.last, "changed");
}
