#include "acts/New_Rech.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace acts {

void New_Rech::BuildForm()
{
    setAccessibleName("Recherche de patients");
    Grid2.setAccessibleName("Patients trouvés");
    Grid2.SetUsualRows(20);
    Dress(Image4[Close], "cancel", "Fermer la recherche");
    Dress(Image4[Back], "search", "Changer les critères", Command::Search);
    Dress(Image4[Leave], "quit", "Quitter", Command::Leave);
    for (const int way : {Close, Back}) {
        RetainSizeWhenHidden(Image4[way]);
        Image4[way].hide();
    }
    Inside(SSPanel1, Column{
                         Item::Growing(Grid2),
                         Row{Item::Stretch(), Image4[Back], Image4[Close], Item::Gap(), Image4[Leave]},
                     });
    SetContent(Column{Item::Growing(SSPanel1)});
    BuildCriteria();
    criteria.setParent(this);
    criteria.hide();
}

void New_Rech::BuildCriteria()
{
    constexpr int width = 432;
    const char* const sexes[] = {"Masculin", "Féminin", "Ensemble"};
    const char* const statuses[] = {"Récents", "Archivés", "Ensemble"};
    for (int option = 0; option < SSOption1.Size(); ++option) {
        SSOption1[option].setText(sexes[option]);
        SSOption2[option].setText(statuses[option]);
    }
    SSOption1[NoCriterion].setChecked(true);
    SSOption2[NoCriterion].setChecked(true);
    Text2[LastName].setPlaceholderText("Début du nom");
    Text2[FirstName].setPlaceholderText("Début du prénom");
    for (const int accept : {FindNumber, FindNames}) {
        Dress(Image2[accept], "accept", "Rechercher", Command::Accept);
        Dress(Image2[accept + 1], "cancel", "Annuler");
    }
    criteria.setProperty("floating", true);
    criteria.setAccessibleName("Critères de recherche");
    AddPage(SSTab1, "Par numéro de carte",
            Column{
                Pairs{{&NewLabel("Label1(0)", "N° de Carte"), &Text2[CardNumber]}},
                Item::Stretch(),
                Row{Item::Stretch(), Image2[FindNumber], Image2[CancelNumber]},
            });
    AddPage(SSTab1, "Par nom",
            Column{
                Pairs{{&NewLabel("Label1(1)", "Nom"), &Text2[LastName]},
                      {&NewLabel("Label1(2)", "Prénom"), &Text2[FirstName]}},
                Row{Titled("Sexe", Column{SSOption1[0], SSOption1[1], SSOption1[2]}),
                    Titled("Dossiers", Column{SSOption2[0], SSOption2[1], SSOption2[2]})},
                Row{Item::Stretch(), Image2[FindNames], Image2[CancelNames]},
            });
    Inside(criteria, Column{SSTab1});
    criteria.setMinimumWidth(width);
}

} // namespace acts
