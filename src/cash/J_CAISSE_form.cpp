#include "cash/J_CAISSE.h"

#include "core/globals.h"
#include "platform/forms/GridTotals.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

#include <QHeaderView>

using namespace forms;

namespace cash {

namespace {

QList<Grid::Column> ActColumns()
{
    return {{"N°", 600, Qt::AlignCenter},
            {"Nom", 1890},
            {"Prénom", 1890},
            {"Unité", 1780},
            {"Heure", 590, Qt::AlignCenter},
            {"R", 460, Qt::AlignCenter},
            {"Montant", 1100, Qt::AlignRight}};
}

Label& Heading(const char* name, const char* text, int widthTwips, Qt::Alignment alignment)
{
    Label& heading = NewLabel(QLatin1String(name), QString::fromUtf8(text));
    heading.setProperty("heading", true);
    heading.setAlignment(alignment | Qt::AlignVCenter);
    heading.setFixedWidth(PixelsOf(widthTwips));
    return heading;
}

/// A list's total under its last columns, from `firstColumn` on.
Layout TotalLine(const Grid& grid, int firstColumn, FigureLabel& total)
{
    return Row{Before(grid, 0, firstColumn - 1, total.objectName() + "-caption", "Total"),
               Under(grid, firstColumn, grid.Columns() - 1, total), Item::Stretch()}
        .Spacing(0);
}

} // namespace

J_CAISSE::J_CAISSE()
    : Form("J_CAISSE", "Caisse du Jour"),
      Grid1("Grid1", {{"Unité", 1780}, {"Nbre", 840, Qt::AlignCenter}, {"Montant", 1280, Qt::AlignRight}}),
      Grid2("Grid2", ActColumns()), Grid3("Grid3", ActColumns()),
      Grid4("Grid4", {{"N°", 600, Qt::AlignCenter}, {"Objet de la dépense", 5270}, {"Montant", 1300, Qt::AlignRight}})
{
    BuildForm();
    On(Grid3, &Grid::Click, *this, [this] { Grid3_Click(); });
    On(Grid3, &Grid::DblClick, *this, [this] { Grid3_DblClick(); });
    On(Grid3, &Grid::Entered, *this, [this] { Grid3_DblClick(); });
    for (int index = 1; index <= Image1.Size(); ++index)
        On(Image1[index], &Picture::clicked, *this, [this, index] { Image1_Click(index); });
    for (int index = 0; index < Image2.Size(); ++index)
        On(Image2[index], &Picture::clicked, *this, [this, index] { Image2_Click(index); });
    for (int index = 0; index < SSPanel2.Image3.Size(); ++index)
        On(SSPanel2.Image3[index], &Picture::clicked, *this, [this, index] { Image3_Click(index); });
}

void J_CAISSE::BuildForm()
{
    struct {
        int index;
        const char* icon;
        const char* action;
    } const pictures[] = {
        {0, "print", "Imprimer les actes réglés"}, {1, "print", "Imprimer les instances"},
        {2, "print", "Imprimer les dépenses"},     {3, "print", "Imprimer le récapitulatif"},
        {4, "edit", "Corriger l'acte choisi"},
    };
    for (const auto& picture : pictures) {
        Image2[picture.index].SetIcon(picture.icon);
        Image2[picture.index].SetAction(QString::fromUtf8(picture.action));
    }
    Image1[1].SetIcon("calendar");
    Image1[2].SetIcon("quit");
    Bulle.Serve(Image1[1], [] { return QString(core::SpeaksFrench() ? " Autre date " : "تـغـيير"); });
    Bulle.Serve(Image1[2], [] { return QString(core::SpeaksFrench() ? " Quitter " : "مـغادرة"); });
    Grid1.setAccessibleName("Récapitulatif par unité");
    Grid2.setAccessibleName("Actes réglés");
    Grid3.setAccessibleName("Actes en instance");
    Grid4.setAccessibleName("Dépenses");
    Grid1.horizontalHeader()->hide();
    Grid2.SetGroupHeading(5, 6, "Reçu");
    Grid3.SetGroupHeading(5, 6, "Reçu");

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Image1[1], Image1[2]},
        Item::Growing(SSTab1),
    });
    BuildPages();
    Bulle.setParent(this);
    SSPanel2.setParent(this);
    SSPanel2.hide();
}

void J_CAISSE::BuildPages()
{
    RCP[4].setProperty("role", "balance");
    AddPage(SSTab1, "Récap",
            Row{
                Column{
                    Row{NewLabel("Label1(6)", "Solde de la veille"), Item::Growing(RCP[1])},
                    Item::Growing(Column{
                        Row{Heading("Label1(9)", "Unité", 1780, Qt::AlignLeft),
                            Heading("Label1(8)", "Nbre", 840, Qt::AlignCenter),
                            Heading("Label1(4)", "Montant", 1280, Qt::AlignRight), Item::Stretch()}
                            .Spacing(0),
                        Item::Growing(Grid1),
                    }
                                      .Spacing(0)),
                    Row{Before(Grid1, 0, 0, "LTotal", "Total"), Under(Grid1, 1, 1, RCP[0]), Under(Grid1, 2, 2, RCP[2]),
                        Item::Stretch()}
                        .Spacing(0),
                },
                Item::Gap(3),
                Column{
                    Pairs{{&NewLabel("Label1(7)", "Dépenses"), &RCP[3]},
                          {&NewLabel("Label1(10)", "Nouveau solde"), &RCP[4]}},
                    Item::Stretch(),
                    Row{Item::Stretch(), Image2[3]},
                },
            });
    AddPage(SSTab1, "Actes Réglés",
            Column{Item::Growing(Grid2), TotalLine(Grid2, 5, RCP[5]), Row{Image2[0], Item::Stretch()}});
    AddPage(SSTab1, "Instances",
            Column{Item::Growing(Grid3), TotalLine(Grid3, 5, RCP[6]), Row{Image2[4], Image2[1], Item::Stretch()}});
    AddPage(SSTab1, "Dépenses",
            Column{Item::Growing(Grid4), TotalLine(Grid4, 2, RCP[7]), Row{Image2[2], Item::Stretch()}});
}

} // namespace cash
