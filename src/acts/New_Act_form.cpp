#include "acts/New_Act.h"

#include "platform/forms/GridTotals.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

#include <QShortcut>

using namespace forms;

namespace acts {

namespace {

constexpr int UnitTwips = 1780;
constexpr int CountTwips = 840;
constexpr int StandingTwips = 580;
constexpr int SheetHeight = 512; // pixels

} // namespace

New_Act::New_Act()
    : Form("New_Act"), Grid1("Grid1", {{"Unité", UnitTwips},
                                       {"Réc.", CountTwips, Qt::AlignCenter},
                                       {"Arch.", CountTwips, Qt::AlignCenter},
                                       {"Total", CountTwips, Qt::AlignCenter}}),
      Grid2("Grid2", {{"Unité", UnitTwips},
                      {"Patient", 3390},
                      {"Date", 1180, Qt::AlignCenter},
                      {"Heure", 590, Qt::AlignCenter},
                      {"Type", 570, Qt::AlignCenter},
                      {"Règl", StandingTwips, Qt::AlignCenter},
                      {"Réc.", StandingTwips, Qt::AlignCenter},
                      {"Arch.", StandingTwips, Qt::AlignCenter}})
{
    BuildForm();
    AddShortcuts();
    On(Grid1, &Grid::Click, *this, [this] { Grid1_Click(); });
    On(Grid2, &Grid::Click, *this, [this] { Grid2_Click(); });
    On(Grid2, &Grid::DblClick, *this, [this] { Grid2_DblClick(); });
    On(Grid2, &Grid::Entered, *this, [this] { Grid2_DblClick(); });
    for (int index = 0; index < Image1.Size(); ++index)
        On(Image1[index], &Picture::clicked, *this, [this, index] { Image1_Click(index); });
    for (int index = 0; index < Option1.Size(); ++index)
        On(Option1[index], &OptionButton::toggled, *this, [this, index](bool chosen) {
            if (chosen)
                Option1_Click(index);
        });
    On(Image2, &Picture::clicked, *this, [this] { Image2_Click(); });
    On(Text1, &DateField::Entered, *this, [this] { Image1[3].setFocus(); });
    On(Text1, &DateField::DateRefused, *this, [this] { Text1.setFocus(); });
}

void New_Act::AddShortcuts()
{
    struct {
        QKeySequence keys;
        int picture;
    } const moves[] = {
        {Qt::ALT | Qt::Key_Left, 0},
        {Qt::ALT | Qt::Key_Right, 1},
        {Qt::Key_F4, 5},
        {Qt::CTRL | Qt::Key_W, 2},
    };
    for (const auto& move : moves) {
        auto* shortcut = new QShortcut(move.keys, this);
        On(*shortcut, &QShortcut::activated, *this, [this, picture = move.picture] { Image1_Click(picture); });
    }
    auto* toggle = new QShortcut(Qt::Key_Space, &Grid2);
    toggle->setContext(Qt::WidgetShortcut);
    On(*toggle, &QShortcut::activated, *this, [this] { Grid2_DblClick(); });
}

void New_Act::NamePictures()
{
    struct {
        int index;
        const char* icon;
        const char* action;
    } const pictures[] = {
        {0, "previous", "Jour précédent (Alt+Gauche)"},
        {1, "next", "Jour suivant (Alt+Droite)"},
        {2, "quit", "Quitter (Ctrl+W)"},
        {3, "quit", "Quitter (Ctrl+W)"},
        {4, "archive", "Archiver ou remettre l'acte choisi (Entrée)"},
        {5, "calendar", "Choisir une date (F4)"},
    };
    for (const auto& picture : pictures) {
        Image1[picture.index].SetIcon(picture.icon);
        Image1[picture.index].SetAction(QString::fromUtf8(picture.action));
    }
    Image1[4].SetCaption("Acte");
    Image1[5].SetCaption("Date");
    Image2.SetIcon("refresh");
    Image2.SetCaption("Actualiser");
    Image2.SetAction("Actualiser la visibilité des actes");
}

void New_Act::BuildForm()
{
    NamePictures();
    Grid1.setAccessibleName("Actes par unité");
    Grid2.setAccessibleName("Actes du jour");
    Grid1.SetGroupHeading(Recent, Total, "Actes");
    Grid2.SetGroupHeading(IsRecent, IsArchived, "Statut");
    Text1.setAccessibleName("Date");
    QFont bold = DayLabel.font();
    bold.setBold(true);
    DayLabel.setFont(bold);
    OptionLabel.setFont(bold);
    const char* shares[] = {"5 sur 5", "1 sur 2", "1 sur 3", "1 sur 4", "1 sur 5"};
    for (int option = 0; option < Option1.Size(); ++option)
        Option1[option].setText(shares[option]);
    Option1[1].setChecked(true);
    SSOption2[0].setText("Affichage intégral");
    SSOption2[1].setText("Affichage limité");
    SSOption2[0].setChecked(true);
    BuildSheetPage();
    BuildDisplayPage();
    SetContent(Column{Item::Growing(SSTab1)});
}

void New_Act::BuildSheetPage()
{
    // Wide enough for all columns: a grid that scrolls sideways would move away from its totals.
    Grid1.setFixedWidth(Grid1.sizeHint().width());
    Grid2.setMinimumWidth(Grid2.sizeHint().width());
    Grid2.setMinimumHeight(SheetHeight);
    AddPage(SSTab1, "Actes du jour",
            Column{
                Row{Image1[0], Image1[1], Item::Gap(), NewLabel("Label1(2)", "Journée du :"), DayLabel, Item::Gap(),
                    Image1[5], Image1[4], Item::Stretch(), Image1[2]},
                Item::Growing(Row{
                    Column{
                        Item::Growing(Grid1),
                        Row{Before(Grid1, Unit, Unit, "LTotal1", "Total"), Under(Grid1, Recent, Recent, Label4[1]),
                            Under(Grid1, Archived, Archived, Label4[2]), Under(Grid1, Total, Total, Label4[3]),
                            Item::Stretch()}
                            .Spacing(0),
                    },
                    Item::Growing(Column{
                        Item::Growing(Grid2),
                        Row{Before(Grid2, ActUnit, ServiceDate, "LTotal2", "Total"), Under(Grid2, Hour, Hour, LT[3]),
                            Before(Grid2, Type, PayCode, "LTotal3", "dont"), Under(Grid2, IsRecent, IsRecent, LT[1]),
                            Under(Grid2, IsArchived, IsArchived, LT[2]), Item::Stretch()}
                            .Spacing(0),
                    }),
                }),
            });
}

void New_Act::BuildDisplayPage()
{
    Inside(SSPanel1, Column{SSOption2[0], SSOption2[1]});
    AddPage(SSTab1, "Affichage",
            Column{
                Titled("Paramètres d'affichage",
                       Column{
                           Row{Option1[0], Option1[1], Option1[2], Option1[3], Option1[4], Item::Stretch()},
                           Row{NewLabel("Label1(12)", "Visibles"), OptionLabel, Item::Stretch(), Image2},
                       }),
                SSPanel1,
                Item::Stretch(),
                Row{NewLabel("Label1(4)", "Date"), Text1, Item::Stretch(), Image1[3]},
            });
}

} // namespace acts
