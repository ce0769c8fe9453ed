#pragma once

#include <QString>
#include <QtGlobal>
#include <memory>

namespace forms {

class Form;

/// A wait notice, shown during its lifetime.
class WaitNotice {
public:
    WaitNotice() = default;
    virtual ~WaitNotice() = default;
    Q_DISABLE_COPY_MOVE(WaitNotice)

    /// Progress out of `total`; shown as a bar after a second.
    virtual void Advance(int done, int total) = 0;
};

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, YesNo, NoYes /* Enter means No */ };
enum class Answer { Ok, Yes, No };

/// All interaction with the user outside of controls; tests substitute their own.
class Desk {
public:
    virtual ~Desk() = default;

    /// Shows a message box, as plain text, and waits for the answer. Closing a yes/no box means No.
    virtual Answer Message(const QString& text, Icon icon, const QString& title, Buttons buttons) = 0;

    /// Loads the form and shows it modally until it is unloaded.
    virtual void ShowModal(Form& form) = 0;

    virtual void Beep() = 0;

    /// Shows `text` immediately, without a button, until the notice is destroyed. May show nothing.
    virtual std::unique_ptr<WaitNotice> Wait(const QString& text);

    /// Ends the program at once: nothing after the call runs.
    [[noreturn]] virtual void EndProgram(int code) = 0;
};

/// The current desk. Asserts that one was set.
Desk& TheDesk();
void SetDesk(Desk* desk);

/// The message box that screens call.
Answer MsgBox(const QString& text, Icon icon = Icon::None, const QString& title = {}, Buttons buttons = Buttons::Ok);

} // namespace forms
