#include "core/Auteur.h"

#include "platform/forms/Layout.h"
#include "platform/host/Files.h"

#include <QCompleter>

using namespace forms;

namespace core {

void Auteur::BuildForm()
{
    Text2.setAccessibleName("Lecteur");
    Text2.setToolTip("Lecteur ou chemin d'un dossier, puis Entrée");
    if (const QStringList drives = host::Drives(); !drives.isEmpty()) {
        auto* const completer = new QCompleter(drives, &Text2); // listed by the arrow keys
        completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
        Text2.setCompleter(completer);
    }
    Dress(Image1, "drive", "Aller à ce lecteur");

    Dir1.setMinimumSize(416, 264);
    File1.setFixedHeight(32);
    hint.setText("Choisissez le dossier du cabinet.");

    Text1.setEchoMode(QLineEdit::Password);
    Text1.setStyleSheet("lineedit-password-character: 42");
    Text1.setAccessibleName("Code d'accès");
    Text1.setPlaceholderText("Code d'accès");
    Text1.setFixedWidth(160);
    Dress(Image2[Accept], "accept", "Ouvrir ce cabinet", Command::Accept);
    Dress(Image2[Cancel], "cancel", "Annuler", Command::Leave);
    RetainSizeWhenHidden(Text1);
    RetainSizeWhenHidden(Image2[Accept]);

    SetContent(Column{
        Row{NewLabel("LDrive", "Lecteur"), Item::Growing(Text2), Image1},
        NewLabel("LFolders", "Dossier"),
        Item::Growing(Dir1),
        File1,
        Label1,
        Row{Text1, hint, Item::Stretch(), Image2[Accept], Image2[Cancel]},
    });
    QWidget* order[] = {&Text2, &Image1, &Dir1, &Text1, &Image2[Accept], &Image2[Cancel]};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
}

} // namespace core
