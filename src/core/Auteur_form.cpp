#include "core/Auteur.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace core {

void Auteur::BuildForm()
{
    Text2.setAccessibleName("Lecteur");
    Text2.setToolTip("Lecteur ou chemin d'un dossier, puis Entrée");
    Image1.SetIcon("drive");
    Image1.SetAction("Aller à ce lecteur");

    Dir1.setMinimumSize(416, 264);
    File1.setFixedHeight(32);
    Label1.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    hint.setText("Choisissez le dossier du cabinet.");

    Text1.setEchoMode(QLineEdit::Password);
    Text1.setStyleSheet("lineedit-password-character: 42");
    Text1.setAccessibleName("Code d'accès");
    Text1.setPlaceholderText("Code d'accès");
    Text1.setFixedWidth(160);
    Image2[0].SetIcon("accept");
    Image2[0].SetAction("Ouvrir ce cabinet");
    Image2[1].SetIcon("cancel");
    Image2[1].SetAction("Annuler");
    KeepPlace(Text1);
    KeepPlace(Image2[0]);

    SetContent(Column{
        Row{NewLabel("LDrive", "Lecteur"), Item::Growing(Text2), Image1},
        NewLabel("LFolders", "Dossier"),
        Item::Growing(Dir1),
        File1,
        Label1,
        Row{Text1, hint, Item::Stretch(), Image2[0], Image2[1]},
    });
    QWidget* order[] = {&Text2, &Image1, &Dir1, &Text1, &Image2[0], &Image2[1]};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
    Dir1.setFocus();
}

} // namespace core
