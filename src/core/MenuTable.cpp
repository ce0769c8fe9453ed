#include "core/MenuTable.h"

namespace core {

const std::vector<MenuEntry>& MenuTable()
{
    constexpr bool submenu = true;
    constexpr bool entry = false;
    constexpr bool before = true;
    constexpr bool opened = true;
    static const std::vector<MenuEntry> table{
        {"mnu_6", "Mouvements", "", submenu, before, opened},
        {"mnu_aprpos", "Explorer ...", "mnu_6", entry, before, !opened},
        {"mnu_Prest", "Prestations", "mnu_6", entry, !before, opened},
        {"mnu_tarif", "Tarifs", "mnu_6", entry, !before, opened},
        {"NPatients", "Patients", "mnu_6", entry, !before, opened, "Select * from Patients",
         "Aucune patient enregistré", "ZEP Lumo"},
        {"NActes", "Actes", "mnu_6", entry, !before, opened, "Select * from Actes", "Aucun acte enregistré",
         "ATTENTION"},
        {"Tcache", "-", "mnu_6", entry, before, opened},
        {"mnuQ", "Quitter", "mnu_6", entry, before, opened},

        {"mnu_13", "&Editions", "", submenu, !before, opened},
        {"mnu_Recap", "&Planning", "mnu_13", entry, before, opened},
        {"mnu_recette", "Journal d'activité", "mnu_13", entry, before, opened, "Select * from Actes",
         "Aucune recette enregistrée", "ZEP Lumo"},
        {"mnu_mens", "Récap Mensuelle", "mnu_13", entry, before, opened, "Select * from Actes", "Aucun acte enregistré",
         "ATTENTION"},
        {"mnu_asuppr", "Actes supprimés", "mnu_13", entry, before, opened, "select * from Actes_suppr",
         "Aucun acte supprimé", "Lumo ZEP"},
        {"NT", "-", "mnu_13", entry, before, opened},
        {"mnu_Deep", "Dépenses ordinaires", "mnu_13", entry, before, opened},
        {"mnu_Inst", "Règlements en instance", "mnu_13", entry, before, opened,
         "Select * from Actes where Flag_R < 2 order by Date", "Aucun règlement en instance", "ATTENTION"},
        // The check covers two tables, see Form1::mnu_Caisse_Click; only its message is here.
        {"mnu_Caisse", "Caisse du Jour", "mnu_13", entry, before, opened, "", "Aucun mouvement de fonds enregistré",
         "Lumo ZEP"},
        {"t2t", "-", "mnu_13", entry, before, opened},
        {"mnu_Charges", "&Charges", "mnu_13", entry, before, opened},
        {"mnu_resultat", "&Résultat", "mnu_13", entry, before, opened, "Select * from Actes",
         "Aucune activité enregistrée", "ZEP Lumo"},
    };
    return table;
}

} // namespace core
