#include "catalogue/Tarifs.h"

#include "core/globals.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Guard.h"
#include "platform/forms/KeyFilters.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace catalogue {

Tarifs::Tarifs()
    : Form("Tarifs"),
      Grid1("Grid1", {{"N°", 500, Qt::AlignCenter}, {"Code", 800, Qt::AlignCenter}, {"Tarif", 1040, Qt::AlignCenter}})
{
    BuildForm();
    RateField.KeyPress = KeyFilterDigits;
    On(Grid1, &Grid::Click, *this, &Tarifs::Grid1_Click);
    On(Grid1, &Grid::DblClick, *this, &Tarifs::Grid1_DblClick);
    On(Grid1, &Grid::Entered, *this, &Tarifs::Grid1_DblClick);
    OnEach(Image2, &Picture::clicked, *this, &Tarifs::Image2_Click);
    On(RateField, &TextBox::Entered, *this, &Tarifs::AcceptRate);
}

void Tarifs::Form_Load()
{
    setWindowTitle(" ");
    CenterForm(*this);
    Rates = ReadTariffs(OpenTariffs());
    ShowRates();
    Grid1.setFocus();
}

void Tarifs::Image2_Click(int index)
{
    switch (index) {
    case Modify:
        return OpenEntry();
    case AcceptEntry:
        return AcceptRate();
    case CancelEntry:
        return CloseEntry();
    default:
        StoreRates();
        Unload();
    }
}

void Tarifs::EscapePressed()
{
    if (SSPanel3.isVisibleTo(this))
        CloseEntry();
}

void Tarifs::Grid1_Click()
{
    EditRow = Grid1.Row();
    Grid1.SelectRow(EditRow);
    Label3.setText(Grid1.Text(EditRow, Code));
    RateField.setText(Grid1.Text(EditRow, Rate));
}

void Tarifs::Grid1_DblClick()
{
    Grid1_Click();
    OpenEntry();
}

void Tarifs::ShowRates()
{
    Grid1.SetRows(TariffCount);
    for (int position = 0; position < TariffCount; ++position) {
        Grid1.SetText(position, Number, PlainText(position + 1));
        Grid1.SetText(position, Code, TariffCode(position));
        Grid1.SetText(position, Rate, PlainText(Rates[static_cast<std::size_t>(position)]));
    }
    Grid1.SetRow(0);
    Grid1_Click();
}

void Tarifs::OpenEntry()
{
    Grid1.setEnabled(false);
    FloatOver(SSPanel3, Grid1);
    RateField.setFocus();
}

void Tarifs::AcceptRate()
{
    Rates[static_cast<std::size_t>(EditRow)] = RoundToInt(Val(RateField.text()));
    Grid1.SetText(EditRow, Rate, RateField.text());
    CloseEntry();
}

void Tarifs::CloseEntry()
{
    SSPanel3.hide();
    Grid1.setEnabled(true);
    Grid1.setFocus();
}

void Tarifs::StoreRates()
{
    dao::Transaction storing(TheDatabase);
    dao::Recordset tariff = OpenTariffs();
    tariff.Edit();
    for (int position = 0; position < TariffCount; ++position)
        tariff.Fields(position) = Rates[static_cast<std::size_t>(position)];
    tariff.Update();
    storing.Commit();
    dao::DBEngine.Idle(dao::RefreshCache);
}

} // namespace catalogue
