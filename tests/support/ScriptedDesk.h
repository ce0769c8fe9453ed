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

/// The desk of the tests: answers message boxes and plays modal screens as the test has said beforehand, each once and
/// in this order. What comes and wasn't expected fails the test at once; what was expected and didn't come fails it at
/// the end.
///
/// It is the desk in force for as long as it lives.
class ScriptedDesk : public forms::Desk {
public:
    ScriptedDesk();
    ~ScriptedDesk() override;
    ScriptedDesk(const ScriptedDesk&) = delete;
    ScriptedDesk& operator=(const ScriptedDesk&) = delete;

    void ExpectMessage(const QString& text, forms::Icon icon, const QString& title,
                       forms::Answer answer = forms::Answer::Ok);

    /// The next modal screen is a `Screen`: it is loaded and shown, `script` plays the user, and must leave it
    /// unloaded.
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

    /// Makes a screen, loads and shows it; the desk keeps it.
    template <class Screen, class... Arguments>
    Screen& Open(Arguments&&... arguments)
    {
        auto screen = std::make_unique<Screen>(std::forward<Arguments>(arguments)...);
        Screen& opened = *screen;
        screens.push_back(std::move(screen));
        Show(opened);
        return opened;
    }

    int BeepCount() const { return beeps; }
    /// The code the program has ended with; none while it runs.
    std::optional<int> EndCode() const { return endCode; }

    /// Fails the test for each expected message box and modal screen that hasn't come, and forgets them.
    void Verify();

    forms::Answer Message(const QString& text, forms::Icon icon, const QString& title, forms::Buttons buttons) override;
    void ShowModal(forms::Form& form) override;
    void Beep() override { ++beeps; }
    std::unique_ptr<forms::WaitNotice> Wait(const QString& text) override;
    /// The notices that came so far, in their order.
    const QStringList& Notices() const { return notices; }
    /// Remembers the code and throws ProgramEnded; so does everything that is asked of the desk later.
    [[noreturn]] void EndProgram(int code) override;

private:
    struct ExpectedMessage {
        QString text;
        forms::Icon icon;
        QString title;
        forms::Answer answer;
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
