#pragma once

#include "platform/forms/Desk.h"
#include "platform/forms/Form.h"
#include "support/User.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <vector>

/// The desk of the tests: answers message boxes and plays modal screens as expected by the test, each once and in
/// order. An unexpected one fails the test at once, a missing one at the end.
///
/// It is the current desk during its lifetime.
class ScriptedDesk : public forms::Desk {
public:
    ScriptedDesk();
    ~ScriptedDesk() override;
    ScriptedDesk(const ScriptedDesk&) = delete;
    ScriptedDesk& operator=(const ScriptedDesk&) = delete;

    /// `buttons`, if given, must be those of the message.
    void ExpectMessage(const QString& text, forms::Icon icon, const QString& title,
                       forms::Answer answer = forms::Answer::Ok, std::optional<forms::Buttons> buttons = {});

    /// Expects a modal `Screen`: it is loaded and shown, and `script`, which plays the user, must unload it.
    template <class Screen>
    void WhenModal(std::function<void(Screen&)> script)
    {
        modals.push_back([script = std::move(script)](forms::Form& form) {
            auto* screen = dynamic_cast<Screen*>(&form);
            if (!screen)
                ADD_FAILURE() << "another screen came up: " << qPrintable(form.objectName());
            else
                script(*screen);
        });
    }

    /// Creates a screen, loads and shows it; the desk owns it.
    template <class Screen, class... Arguments>
    Screen& Open(Arguments&&... arguments)
    {
        auto screen = std::make_unique<Screen>(std::forward<Arguments>(arguments)...);
        Screen& opened = *screen;
        screens.push_back(std::move(screen));
        Show(opened);
        return opened;
    }

    /// What another program does while the next message is shown.
    std::function<void()> Meanwhile;

    int BeepCount() const { return beeps; }
    /// The exit code of the program; none while it runs.
    std::optional<int> EndCode() const { return endCode; }

    /// Fails the test for each missing message box and modal screen, and clears the expectations.
    void Verify();

    forms::Answer Message(const QString& text, forms::Icon icon, const QString& title, forms::Buttons buttons) override;
    void ShowModal(forms::Form& form) override;
    void Beep() override { ++beeps; }
    std::unique_ptr<forms::WaitNotice> Wait(const QString& text) override;
    /// The notices so far, in order.
    const QStringList& Notices() const { return notices; }
    /// Records the code and throws ProgramEnded, as does every later call of the desk.
    [[noreturn]] void EndProgram(int code) override;

private:
    struct ExpectedMessage {
        QString text;
        forms::Icon icon;
        QString title;
        forms::Answer answer;
        std::optional<forms::Buttons> buttons;
    };

    static void Show(forms::Form& form);
    void StopWhenEnded() const;

    std::deque<ExpectedMessage> messages;
    std::deque<std::function<void(forms::Form&)>> modals;
    std::vector<std::unique_ptr<forms::Form>> screens;
    int beeps = 0;
    QStringList notices;
    std::optional<int> endCode;
};
