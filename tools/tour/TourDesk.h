#pragma once

#include "platform/forms/Form.h"
#include "platform/forms/QtDesk.h"

#include <QHash>
#include <deque>
#include <functional>

namespace tour {

/// The program's desk with a scripted user: the next step of the visit answers each message box and modal screen.
/// Anything unexpected ends the tour with exit code 1.
class TourDesk : public forms::QtDesk {
public:
    /// `folder` receives the pictures, as many as `expected`.
    TourDesk(const QString& folder, int expected);

    /// Passes the next modal screen to `visit`, once it is shown; `visit` must close it.
    void Visit(std::function<void(forms::Form&)> visit);
    /// Expects a message box with `text` and clicks the button with this caption ("Oui", "OK").
    void Answer(const QString& text, const QString& button);
    /// Called when the program ends.
    void AtEnd(std::function<void()> look);

    /// Saves a picture of the window as "03-name.png", numbered in sequence. Prints parts that are illegible or off the
    /// screen, and a picture that shows the same as an earlier one and is no message: the tour then ends with exit
    /// code 1.
    void TakePicture(QWidget& window, const QString& name);
    /// The same for a window that is larger than the screen on purpose.
    void TakeLongPicture(QWidget& window, const QString& name);
    /// Ends the tour with this reason unless `holds`.
    static void Require(bool holds, const QString& reason);

    forms::Answer Message(const QString& text, forms::Icon icon, const QString& title, forms::Buttons buttons) override;
    void ShowModal(forms::Form& form) override;
    void Beep() override {}
    [[noreturn]] void EndProgram(int code) override;

private:
    struct ExpectedMessage {
        QString text;
        QString button;
    };

    void Report(const QString& picture, const QString& fault);
    void PlayWhenShown(forms::Form& form, const std::function<void(forms::Form&)>& visit);

    QString folder;
    int expected;
    int pictures = 0;
    QHash<std::size_t, QString> taken; ///< names by hash
    int faults = 0;
    std::deque<std::function<void(forms::Form&)>> visits;
    std::deque<ExpectedMessage> answers;
    std::function<void()> look;
};

} // namespace tour
