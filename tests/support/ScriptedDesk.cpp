#include "support/ScriptedDesk.h"

#include "platform/forms/Guard.h"

using forms::Answer;
using forms::Buttons;
using forms::Icon;

namespace {

Answer SafeAnswer(Buttons buttons)
{
    return buttons == Buttons::Ok ? Answer::Ok : Answer::No;
}

std::string Described(const QString& text, Icon icon, const QString& title)
{
    constexpr const char* names[] = {"no icon", "critical", "question", "exclamation", "information"};
    return '"' + text.toStdString() + "\" (" + names[static_cast<int>(icon)] + ", title \"" + title.toStdString() +
           "\")";
}

} // namespace

ScriptedDesk::ScriptedDesk()
{
    forms::SetDesk(this);
}

ScriptedDesk::~ScriptedDesk()
{
    Verify();
    while (!screens.empty()) // destroyed in reverse order, hidden first so that no events are sent
    {
        screens.back()->hide();
        screens.pop_back();
    }
    forms::SetDesk(nullptr);
}

void ScriptedDesk::ExpectMessage(const QString& text, Icon icon, const QString& title, Answer answer,
                                 std::optional<Buttons> buttons)
{
    messages.push_back({text, icon, title, answer, buttons});
}

void ScriptedDesk::Verify()
{
    for (const ExpectedMessage& expected : std::exchange(messages, {}))
        ADD_FAILURE() << "this message didn't come: " << Described(expected.text, expected.icon, expected.title);
    if (const auto missing = std::exchange(modals, {}).size(); missing > 0)
        ADD_FAILURE() << missing << " expected modal screen(s) didn't come";
}

Answer ScriptedDesk::Message(const QString& text, Icon icon, const QString& title, Buttons buttons)
{
    StopWhenEnded();
    if (Meanwhile)
        std::exchange(Meanwhile, {})();
    if (messages.empty()) {
        ADD_FAILURE() << "unexpected message " << Described(text, icon, title);
        return SafeAnswer(buttons);
    }
    const ExpectedMessage expected = messages.front();
    messages.pop_front();
    EXPECT_EQ(Described(text, icon, title), Described(expected.text, expected.icon, expected.title));
    EXPECT_EQ(static_cast<int>(expected.buttons.value_or(buttons)), static_cast<int>(buttons)) << text.toStdString();
    const bool fits = (buttons == Buttons::Ok) == (expected.answer == Answer::Ok);
    EXPECT_TRUE(fits) << "the answer given doesn't fit the buttons of " << Described(text, icon, title);
    return fits ? expected.answer : SafeAnswer(buttons);
}

void ScriptedDesk::Show(forms::Form& form)
{
    form.Load();
    if (!form.IsLoaded())
        return;
    form.show();
    form.activateWindow();
    support::ProcessEvents();
}

void ScriptedDesk::ShowModal(forms::Form& form)
{
    StopWhenEnded();
    if (modals.empty()) {
        ADD_FAILURE() << "unexpected modal screen " << qPrintable(form.objectName());
        return;
    }
    const auto script = std::move(modals.front());
    modals.pop_front();

    form.setModal(true);
    Show(form);
    if (form.IsLoaded())
        script(form);
    if (endCode)
        form.hide(); // its owner is about to be destroyed
    StopWhenEnded();
    if (form.IsLoaded()) {
        ADD_FAILURE() << "the script left " << qPrintable(form.objectName()) << " open";
        form.Unload();
        form.hide(); // if the screen refuses to close
    }
    support::ProcessEvents();
}

std::unique_ptr<forms::WaitNotice> ScriptedDesk::Wait(const QString& text)
{
    notices << text;
    return Desk::Wait(text);
}

void ScriptedDesk::EndProgram(int code)
{
    if (!endCode)
        endCode = code;
    throw forms::ProgramEnded{code};
}

void ScriptedDesk::StopWhenEnded() const
{
    if (endCode)
        throw forms::ProgramEnded{*endCode};
}
