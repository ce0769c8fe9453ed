#pragma once

#include "platform/forms/Desk.h"

#include <cstdlib>

namespace bench {

/// Shows nothing and answers yes.
class QuietDesk : public forms::Desk {
public:
    QuietDesk() { forms::SetDesk(this); }

    forms::Answer Message(const QString&, forms::Icon, const QString&, forms::Buttons buttons) override
    {
        return buttons == forms::Buttons::YesNo ? forms::Answer::Yes : forms::Answer::Ok;
    }
    void ShowModal(forms::Form&) override {}
    void Beep() override {}
    [[noreturn]] void EndProgram(int code) override { std::exit(code); }
};

} // namespace bench
