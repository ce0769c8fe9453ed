#pragma once

#include <QString>
#include <QtGlobal>
#include <memory>

namespace forms {

class Form;

/// Says that something long is under way, for as long as it lives.
class WaitNotice {
public:
    WaitNotice() = default;
    virtual ~WaitNotice() = default;
    Q_DISABLE_COPY_MOVE(WaitNotice)

    /// How much is done, of `total`; past a second a bar shows it.
    virtual void Advance(int done, int total) = 0;
};

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, YesNo, NoYes /* Enter means No */ };
enum class Answer { Ok, Yes, No };

/// Everything that reaches the user outside a control goes through here, so that tests sit where the user sits.
class Desk {
public:
    virtual ~Desk() = default;

    /// Shows a message box and waits for the answer. Text and title are shown as plain text. Closing a yes/no box is
    /// No.
    virtual Answer Message(const QString& text, Icon icon, const QString& title, Buttons buttons) = 0;

    /// Loads the form and shows it in front of all others until it is unloaded.
    virtual void ShowModal(Form& form) = 0;

    virtual void Beep() = 0;

    /// Shows `text` at once, without a button, until the notice goes. A desk without a display shows nothing.
    virtual std::unique_ptr<WaitNotice> Wait(const QString& text);

    /// Ends the program at once: nothing after the call runs.
    [[noreturn]] virtual void EndProgram(int code) = 0;
};

/// The desk in force. Raises an assertion when none was set.
Desk& TheDesk();
void SetDesk(Desk* desk);

/// The message box that screens call.
Answer MsgBox(const QString& text, Icon icon = Icon::None, const QString& title = {}, Buttons buttons = Buttons::Ok);

} // namespace forms
