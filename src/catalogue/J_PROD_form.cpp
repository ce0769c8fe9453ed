#include "catalogue/J_PROD.h"

#include "core/globals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace catalogue {

void J_PROD::BuildForm()
{
    setAccessibleName("Prestations");
    Dress(Image1[MoveUp], "up", "Monter la prestation", Command::MoveUp);
    Dress(Image1[MoveDown], "down", "Descendre la prestation", Command::MoveDown);
    const struct {
        Action action;
        const char* icon;
        QList<Command> commands;
        QString french;
        QString arabic;
    } actions[] = {
        {New, "add", {Command::New}, " Nouveau ", "جـديـد"},
        {Modify, "edit", {Command::Modify}, " Modifier ", "مـراجـعة"},
        {Delete, "delete", {Command::Delete}, " Supprimer ", "حـذف"},
        {Quit, "quit", {Command::Leave, Command::Accept}, " Quitter ", "مـغادرة"},
    };
    for (const auto& each : actions) {
        Picture& picture = Crecettes[each.action];
        Dress(picture, each.icon, each.french, each.commands);
        Bulle.Attach(picture,
                     [french = each.french, arabic = each.arabic] { return core::SpeaksFrench() ? french : arabic; });
        RetainSizeWhenHidden(picture);
    }
    Grid1.setAccessibleName("Prestations");
    Grid1.SetUsualRows(20);

    NameField.setAccessibleName("Dénomination");
    PriceField.setAccessibleName("Prix");
    Dress(Image2[Accept], "accept", "Enregistrer la prestation", Command::Accept);
    Dress(Image2[Cancel], "cancel", "Annuler");
    SSPanel3.setProperty("floating", true);
    SSPanel3.setAccessibleName("Saisie d'une prestation");
    SSPanel3.setMinimumWidth(ScaledPixelsOf(4800));
    Inside(SSPanel3,
           Column{
               SSPanel2,
               Pairs{{&NewLabel("Label1(1)", "Dénom."), &NameField}, {&NewLabel("Label1(2)", "Prix"), &PriceField}},
               Row{Item::Stretch(), Image2[Accept], Image2[Cancel]},
           });

    SetContent(Column{
        Row{Image1[MoveUp], Image1[MoveDown], Item::Stretch(), Crecettes[New], Crecettes[Modify], Crecettes[Delete],
            Crecettes[Quit]},
        Item::Growing(Grid1),
    });
    SSPanel3.setParent(this);
    SSPanel3.hide();
    Bulle.setParent(this);
}

} // namespace catalogue
