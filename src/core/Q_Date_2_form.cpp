#include "core/Q_Date_2.h"

#include "platform/forms/Layout.h"

#include <QGridLayout>
#include <QStyle>

using namespace forms;

namespace core {

namespace {

constexpr int Columns = 7;
constexpr int CellWidth = 46;
constexpr int CellHeight = 32;

/// The chosen day is red, all others have the usual colour of a button's text.
void ColourDay(Button& day, bool chosen)
{
    if (day.property("chosen").toBool() == chosen)
        return;
    day.setProperty("chosen", chosen);
    day.style()->unpolish(&day);
    day.style()->polish(&day);
}

} // namespace

void Q_Date_2::SSCommand1_Click(int cell)
{
    for (int other = 1; other <= Cells; ++other)
        ColourDay(SSCommand1[other], other == cell);
    Text2_Click(cell);
    Label2.setText(SSCommand1[cell].text());
    SSCommand1[cell].setFocus();
}

void Q_Date_2::BuildForm()
{
    const auto days = [this] {
        auto* grid = new QGridLayout;
        grid->setSpacing(2);
        const char* names[] = {"Sam.", "Dim.", "Lun.", "Mar", "Merc.", "Jeudi", "Vend."};
        const char* letters[] = {"S", "D", "L", "Ma", "Me", "J", "V"};
        for (int column = 0; column < Columns; ++column) {
            Label& name = NewLabel(QStringLiteral("LDay(%1)").arg(column), names[column]);
            Label& letter = NewLabel(QStringLiteral("LLetter(%1)").arg(column), letters[column]);
            name.setAlignment(Qt::AlignCenter);
            letter.setAlignment(Qt::AlignCenter);
            letter.setEnabled(false);
            grid->addWidget(&name, 0, column);
            grid->addWidget(&letter, 1, column);
        }
        for (int cell = 1; cell <= Cells; ++cell) {
            const int row = 2 + (cell - 1) / Columns;
            const int column = (cell - 1) % Columns;
            Text2[cell].setFixedSize(CellWidth, CellHeight);
            Text2[cell].setReadOnly(true);
            Text2[cell].setFocusPolicy(Qt::NoFocus);
            Text2[cell].setAccessibleName(QStringLiteral("Case %1").arg(cell));
            SSCommand1[cell].setFixedSize(CellWidth, CellHeight);
            SSCommand1[cell].setProperty("day", true);
            SSCommand1[cell].installEventFilter(this);
            grid->addWidget(&Text2[cell], row, column);
            grid->addWidget(&SSCommand1[cell], row, column); // the button lies over the text
            SSCommand1[cell].raise();
        }
        return grid;
    };

    struct {
        int index;
        const char* icon;
        const char* action;
    } const pictures[] = {
        {0, "accept", "Choisir cette date"},      {1, "cancel", "Annuler"},
        {2, "previous", "Mois précédent"},        {3, "next", "Mois suivant"},
        {4, "previous-year", "Année précédente"}, {5, "next-year", "Année suivante"},
    };
    for (const auto& picture : pictures) {
        Image2[picture.index].SetIcon(picture.icon);
        Image2[picture.index].SetAction(QString::fromUtf8(picture.action));
        KeepPlace(Image2[picture.index]);
    }
    Combo1.setAccessibleName("Mois");
    Combo2.setAccessibleName("Année");
    Combo1.setMinimumWidth(112);
    Label2.setMinimumWidth(24);
    Label2.setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    SetContent(Column{
        Row{Image2[4], Image2[2], Item::Stretch(), Label2, NewLabel("LSlash", "/"), Combo1, NewLabel("LSlash2", "/"),
            Combo2, Item::Stretch(), Image2[3], Image2[5]},
        Layout(days),
        Row{Item::Stretch(), Image2[0], Image2[1]},
    });
}

} // namespace core
