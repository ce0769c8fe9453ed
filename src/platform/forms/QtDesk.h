#pragma once

#include "platform/forms/Desk.h"

namespace forms {

/// The desk of the program: QMessageBox, modal windows, the system bell.
class QtDesk : public Desk {
public:
    Answer Message(const QString& text, Icon icon, const QString& title, Buttons buttons) override;
    void ShowModal(Form& form) override;
    void Beep() override;
    std::unique_ptr<WaitNotice> Wait(const QString& text) override;
    [[noreturn]] void EndProgram(int code) override;
};

} // namespace forms
