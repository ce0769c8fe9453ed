#include "support/MainWindow.h"

#include "core/Auteur.h"
#include "core/opening.h"

using core::Auteur;
using core::Form1;

namespace tests {

void TypeCode(ScriptedDesk& desk, Form1& main, const QString& folder, const QString& code)
{
    desk.WhenModal<Auteur>([folder, code](Auteur& dialog) {
        dialog.Dir1.SetPath(folder);
        Type(dialog.Text1, code);
        Press(dialog.Text1, Qt::Key_Return);
        if (dialog.isVisible())
            Click(dialog.Image2[core::Auteur::Cancel]);
    });
    main.Entry("mnu_aprpos")->trigger();
}

Form1& StartProgram(ScriptedDesk& desk, const QString& folder)
{
    auto& main = desk.Open<Form1>(core::ScreenOpeners());
    TypeCode(desk, main, folder, "6");
    return main;
}

void Quit(ScriptedDesk& desk, Form1& main, const std::optional<basic::RuntimeError>& expectedError)
{
    desk.ExpectMessage("Veuiller Confirmer Fin de Travail !!", forms::Icon::Question, "ZEP Lumo", forms::Answer::Yes);
    if (expectedError)
        desk.ExpectMessage(core::ErrorText(*expectedError), forms::Icon::Exclamation, "ZEP Lumo");
    main.Entry("mnuQ")->trigger();
}

} // namespace tests
