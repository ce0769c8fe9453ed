#include "core/Q_Date_2.h"

#include "platform/forms/Layout.h"
#include "platform/forms/Readers.h"

#include <QGridLayout>
#include <QStyle>

using namespace forms;

namespace core {

namespace {

constexpr int Columns = 7;
constexpr int CellWidth = 46;
constexpr int CellHeight = 32;

/// Red for the chosen day, the usual button text colour for others.
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
    for (int other = 1; other <= Cells; ++other) {
        ColourDay(SSCommand1[other], other == cell);
        SSCommand1[other].setFocusPolicy(other == cell ? Qt::StrongFocus : Qt::ClickFocus);
    }
    Text2_Click(cell);
    Label2.setText(SSCommand1[cell].text());
}

Layout Q_Date_2::DaysOfMonth()
{
    auto grid = std::make_unique<QGridLayout>();
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
        HideFromReaders(Text2[cell]); // screen readers read the button
        Lend(Text2[cell]);
        Lend(SSCommand1[cell]);
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
    return Layout(std::move(grid));
}

void Q_Date_2::BuildForm()
{
    setAccessibleName("Calendrier");
    Dress(Image2[AcceptDay], "accept", "Choisir cette date", Command::Accept);
    Dress(Image2[CancelDay], "cancel", "Annuler", Command::Leave);
    Dress(Image2[PreviousMonth], "previous", "Mois précédent");
    Dress(Image2[NextMonth], "next", "Mois suivant");
    Dress(Image2[PreviousYear], "previous-year", "Année précédente");
    Dress(Image2[NextYear], "next-year", "Année suivante");
    for (int action = AcceptDay; action <= NextYear; ++action)
        RetainSizeWhenHidden(Image2[action]);
    Combo1.setAccessibleName("Mois");
    Combo2.setAccessibleName("Année");
    Combo1.setMinimumWidth(112);
    Combo1.setMaxVisibleItems(12);
    Label2.setMinimumWidth(24);
    Label2.setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    SetContent(Column{
        Row{Image2[PreviousYear], Image2[PreviousMonth], Item::Stretch(), Label2, NewLabel("LSlash", "/"), Combo1,
            NewLabel("LSlash2", "/"), Combo2, Item::Stretch(), Image2[NextMonth], Image2[NextYear]},
        DaysOfMonth(),
        Row{Item::Stretch(), Image2[AcceptDay], Image2[CancelDay]},
    });
}

} // namespace core
