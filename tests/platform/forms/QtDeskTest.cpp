#include "platform/forms/QtDesk.h"

#include "Sheet.h"
#include "support/User.h"

#include <QApplication>
#include <QMessageBox>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using forms::Answer;
using forms::Buttons;
using forms::Icon;

namespace {

/// Plays the user on the next window.
void OnNextWindow(std::function<void(QWidget&)> play)
{
    QTimer::singleShot(0, qApp, [play = std::move(play)] {
        QWidget* window = QApplication::activeModalWidget();
        if (!window)
            ADD_FAILURE() << "no window came up";
        else
            play(*window);
    });
}

void PressButton(QWidget& box, const QString& text)
{
    for (auto* button : box.findChildren<QPushButton*>()) {
        if (button->text() == text)
            return Click(*button);
    }
    ADD_FAILURE() << "no button " << qPrintable(text);
}

struct RealDesk : testing::Test {
    forms::QtDesk desk;
    RealDesk() { forms::SetDesk(&desk); }
    ~RealDesk() override { forms::SetDesk(nullptr); }
};

} // namespace

TEST_F(RealDesk, ShowsHostileTextLiterally)
{
    OnNextWindow([](QWidget& window) {
        auto* box = qobject_cast<QMessageBox*>(&window);
        ASSERT_TRUE(box);
        EXPECT_EQ(box->objectName(), "MessageBox");
        EXPECT_EQ(box->windowTitle(), "ATTENTION");
        EXPECT_EQ(box->text(), "<b>L'Hôpital</b> &amp; %1");
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        const auto* label = box->findChild<QLabel*>("qt_msgbox_label");
        ASSERT_TRUE(label);
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        PressButton(window, "OK");
    });
    EXPECT_EQ(forms::MsgBox("<b>L'Hôpital</b> &amp; %1", Icon::Exclamation, "ATTENTION"), Answer::Ok);
}

TEST_F(RealDesk, KeepsFrenchPunctuationOnTheLineOfItsWord)
{
    for (const auto& [text, shown] : {
             std::pair("« A » existe : le remplacer ?\nNon ; oui !",
                       "«\u00A0A\u00A0» existe\u00A0: le remplacer\u00A0?\nNon\u00A0; oui\u00A0!"),
             {"Actualisation terminée ! ! !", "Actualisation terminée ! ! !"},
             {"Fin de Travail !!", "Fin de Travail !!"},
             {"Tapez :\npractice adopt 'a ; b'", "Tapez\u00A0:\npractice adopt 'a ; b'"},
         }) {
        OnNextWindow([shown](QWidget& window) {
            EXPECT_EQ(qobject_cast<QMessageBox*>(&window)->text(), shown);
            PressButton(window, "OK");
        });
        forms::MsgBox(text);
    }
}

TEST_F(RealDesk, AnswersAYesNoBoxByButtonEnterAndEscape)
{
    const auto ask = [](std::function<void(QWidget&)> play, Buttons buttons = Buttons::YesNo) {
        OnNextWindow(std::move(play));
        return forms::MsgBox("Supprimer ?", Icon::Question, "ZEP Lumo", buttons);
    };
    EXPECT_EQ(ask([](QWidget& box) { PressButton(box, "&Oui"); }), Answer::Yes);
    EXPECT_EQ(ask([](QWidget& box) { PressButton(box, "&Non"); }), Answer::No);
    EXPECT_EQ(ask([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); }), Answer::No);
    EXPECT_EQ(ask([](QWidget& box) { box.close(); }), Answer::No);
    for (const auto& [buttons, answer] : {std::pair(Buttons::YesNo, Answer::Yes), {Buttons::NoYes, Answer::No}})
        EXPECT_EQ(ask([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); }, buttons), answer);
    EXPECT_EQ(ask([](QWidget& box) { PressButton(box, "&Oui"); }, Buttons::NoYes), Answer::Yes);
}

TEST_F(RealDesk, ShowsAScreenUntilItIsUnloaded)
{
    Sheet sheet;
    bool played = false;
    OnNextWindow([&](QWidget& window) {
        EXPECT_EQ(&window, &sheet);
        EXPECT_TRUE(sheet.isModal());
        QTest::keyClick(&sheet, Qt::Key_Escape);
        EXPECT_TRUE(sheet.isVisible());
        played = true;
        sheet.Unload();
    });
    desk.ShowModal(sheet);
    EXPECT_TRUE(played);
    EXPECT_FALSE(sheet.isVisible());

    sheet.loading = [&] { sheet.Unload(); };
    desk.ShowModal(sheet); // returns at once
    EXPECT_FALSE(sheet.isVisible());
}

TEST_F(RealDesk, ShowsHowFarTheWorkIs)
{
    const auto notice = desk.Wait("Copie");
    const auto* bar = QApplication::activeModalWidget()->findChild<QProgressBar*>();
    EXPECT_TRUE(QTest::qWaitFor([&] { // it is painted anew at intervals
        notice->Advance(3, 7);
        return bar->value() == 3;
    }));
    EXPECT_EQ(bar->maximum(), 7);
}

TEST(RealDeskDeathTest, EndsTheProgramAtOnceWithItsCode)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(forms::QtDesk().EndProgram(7), testing::ExitedWithCode(7), "");
}
