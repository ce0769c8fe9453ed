#pragma once

#include "core/globals.h"
#include "platform/basic/RuntimeError.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/Dates.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rows.h"
#include "support/ScriptedDesk.h"

namespace tests {

/// A practice and a desk for the tests of a screen, which play a user on it.
template <class Screen>
class ScreenTest : public testing::Test {
protected:
    Screen& OpenScreen()
    {
        practice.Open();
        return desk.Open<Screen>();
    }

    void ExpectRefusal(const QString& reason, const QString& title = "ATTENTION")
    {
        desk.ExpectMessage(reason, forms::Icon::Critical, title);
    }
    void ExpectSaved(const QString& text, const QString& title = "ZEP Lumo")
    {
        desk.ExpectMessage(text, forms::Icon::Information, title);
    }
    /// The question before a line is deleted, which Enter refuses.
    void ExpectDeletion(int line, forms::Answer answer = forms::Answer::Yes)
    {
        desk.ExpectMessage("Confirmer supression de ligne N° " + QString::number(line), forms::Icon::Question,
                           "Confirmation", answer, forms::Buttons::NoYes);
    }
    /// The message about a line that another program has deleted.
    void ExpectGone() { ExpectRefusal("Cette ligne n'existe plus : elle a été supprimée entre-temps."); }

    Practice practice;
    ScriptedDesk desk;
};

} // namespace tests
