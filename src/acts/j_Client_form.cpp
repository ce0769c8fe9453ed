#include "acts/j_Client.h"

#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

#include <QShortcut>

using namespace forms;

namespace acts {

void j_Client::BuildForm()
{
    setAccessibleName("Patients");
    Dress(Crecettes[Search], "search", " Recherche ", Command::Search);
    Dress(Crecettes[Archive], "archive", " Archiver ");
    Dress(Crecettes[Quit], "quit", " Quitter ", {Command::Leave, Command::Accept});
    for (int action = Archive; action <= Search; ++action)
        Bulle.Attach(Crecettes[action]);
    Grid1.setAccessibleName("Patients");
    Grid1.SetUsualRows(20);
    LT[Recent].setAccessibleName("Patients récents");
    LT[Archived].setAccessibleName("Patients archivés");
    LT[Listed].setAccessibleName("Patients affichés");
    auto* toggle = new QShortcut(Qt::Key_Space, &Grid1);
    toggle->setContext(Qt::WidgetShortcut);
    On(*toggle, &QShortcut::activated, *this, &j_Client::Grid1_DblClick);

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Crecettes[Search], Crecettes[Archive], Crecettes[Quit]},
        Item::Growing(Grid1),
        Row{hint, Item::Stretch(), NewLabel("Label1(0)", "Récents"), LT[Recent], Item::Gap(),
            NewLabel("Label1(1)", "Archivés"), LT[Archived], Item::Gap(), NewLabel("Label1(2)", "Total"), LT[Listed]},
    });
    Bulle.setParent(this);
}

} // namespace acts
