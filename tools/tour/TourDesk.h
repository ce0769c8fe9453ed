#pragma once

#include "platform/forms/Form.h"
#include "platform/forms/QtDesk.h"

#include <deque>
#include <functional>

namespace tour {

/// The program's own desk, with a visitor in front of it: each message box and each modal screen is answered by the
/// next step of the visit. What the visit doesn't expect ends it with exit code 1.
class TourDesk : public forms::QtDesk {
public:
    /// `folder` receives the pictures.
    explicit TourDesk(const QString& folder);

    /// The next modal screen is given to `visit`, which must leave it.
    void Visit(std::function<void(forms::Form&)> visit);
    /// The next message box must say `text` and is answered with the button of that caption ("Oui", "OK").
    void Answer(const QString& text, const QString& button);
    /// What is looked at when the program ends.
    void AtEnd(std::function<void()> look);

    /// Saves a picture of the window as "03-name.png", numbered in the order of the visit.
    void TakePicture(QWidget& window, const QString& name);
    /// Ends the visit with a reason unless `holds`.
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

    QString folder;
    int pictures = 0;
    std::deque<std::function<void(forms::Form&)>> visits;
    std::deque<ExpectedMessage> answers;
    std::function<void()> look;
};

} // namespace tour
