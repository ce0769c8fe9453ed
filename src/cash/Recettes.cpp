#include "cash/Recettes.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "data/PaymentCode.h"
#include "platform/basic/Dates.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace cash {

namespace {

QList<Grid::Column> CodeColumns()
{
    constexpr int width = 590;
    QList<Grid::Column> columns{{"Code", width, Qt::AlignCenter}};
    const QStringList tips = PayCodeTips().split('\n');
    const QStringList codes = data::PaymentCodes();
    for (qsizetype code = 0; code < codes.size(); ++code)
        columns << Grid::Column{codes[code].trimmed(), width, Qt::AlignCenter, tips.value(code)};
    columns << Grid::Column{"T.", width, Qt::AlignCenter, "Total du code"};
    return columns;
}

/// Escapes "&" for a control that reads it as the mark of a mnemonic.
QString PlainCaption(QString text)
{
    return text.replace('&', "&&");
}

} // namespace

Recettes::Recettes()
    : Form("Recettes", "Journal d'activité"), Grid1("Grid1", {{"Unité", 1780},
                                                              {"Nbre", 840, Qt::AlignCenter},
                                                              {"Perçu", 1150, Qt::AlignRight},
                                                              {"Théorique", 1150, Qt::AlignRight}}),
      Grid3("Grid3", CodeColumns()), Grid2("Grid2", {{"Unité", 1780},
                                                     {"Date", 1080, Qt::AlignCenter},
                                                     {"Heure", 590, Qt::AlignCenter},
                                                     {"Patient", 2870},
                                                     {"Date", 1080, Qt::AlignCenter},
                                                     {"Heure", 590, Qt::AlignCenter},
                                                     {"Type", 550, Qt::AlignCenter},
                                                     {"Règl", 550, Qt::AlignCenter, PayCodeTips()},
                                                     {"Perçu", 850, Qt::AlignRight},
                                                     {"Théor.", 850, Qt::AlignRight}})
{
    BuildForm();
    On(Grid1, &Grid::Click, *this, &Recettes::Grid1_Click);
    On(Grid2, &Grid::Click, *this, &Recettes::Grid2_Click);
    On(Grid3, &Grid::Click, *this, &Recettes::Grid3_Click);
    OnEach(Image1, &Picture::clicked, *this, &Recettes::Image1_Click);
    OnEach(Dates.Image2, &Picture::clicked, *this, &Recettes::Image2_Click);
    OnEach(Image3, &Picture::clicked, *this, &Recettes::Image3_Click);
    OnEach(Image4, &Picture::clicked, *this, &Recettes::Image4_Click);
    for (int scope = AllUnits; scope <= Nothing; ++scope)
        On(SSOption1[scope], &OptionButton::Entered, *this, [this] { Image4_Click(Accept); });
    OnCommand(Command::Print, [this] {
        if (SSTab1.isEnabled() && SSTab1.currentIndex() == DetailTab)
            OpenScopePanel();
    });
    On(*this, &Form::Unloaded, *this, [this] { Pointer.reset(); });
}

void Recettes::Form_Load()
{
    CenterForm(*this);
    Dates.SetToday();
    SSPanel1.SetCaption("");
    SSTab1.setCurrentIndex(RecapTab);
    SetupJournalGrids();
    OpenLookups();
    Rates = ReadTariffs(OpenTariffs());
    Values = Valuation(Rates);
    ChooseDates();
}

void Recettes::OpenLookups()
{
    ActsByNum = TheDatabase.OpenRecordset("select * from Actes order by num");
    PatientLookup = TheDatabase.OpenRecordset("select * from Patients order by num");
}

void Recettes::SetupJournalGrids()
{
    Grid3.SetRows(TariffCount);
    for (int position = 0; position < TariffCount; ++position)
        Grid3.SetText(position, Code, TariffCode(position));
}

void Recettes::Image1_Click(int index)
{
    if (index == OtherDates)
        ChooseDates();
    else
        Unload();
}

void Recettes::Image2_Click(int index)
{
    if (PeriodChooser::IsAccept(index))
        ShowChosenDates(index);
    else
        Browse();
}

void Recettes::Image3_Click(int index)
{
    for (int button = PrintRecap; button <= PrintCodes; ++button) {
        Image3[button].SetBorder(false);
        Label5[button].hide();
    }
    switch (index) {
    case PrintRecap:
        return PrintJournalRecap();
    case PrintDetail:
        return OpenScopePanel();
    default:
        PrintCodeMatrix();
    }
}

void Recettes::Image4_Click(int index)
{
    if (index == Accept) {
        if (SSOption1[Nothing].isChecked()) {
            MsgBox("Sélection omise", Icon::Critical, "Attention");
            SSOption1[Nothing].setFocus();
            return;
        }
        if (SSOption1[AllUnits].isChecked())
            PrintAllDetail();
        else
            PrintUnitDetail();
    }
    CloseScopePanel();
}

void Recettes::EscapePressed()
{
    if (SSPanel3.isVisibleTo(this))
        Image4_Click(Cancel);
    else if (Dates.isVisibleTo(this))
        Image2_Click(PeriodChooser::CancelDay);
}

void Recettes::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

void Recettes::Grid2_Click()
{
    Grid2.SelectRow(Grid2.Row());
}

void Recettes::Grid3_Click()
{
    Grid3.SelectRow(Grid3.Row());
}

void Recettes::ChooseDates()
{
    Image1[OtherDates].hide();
    SSTab1.setEnabled(false);
    Dates.ShowOver(SSTab1);
}

void Recettes::ShowChosenDates(int acceptPicture)
{
    const auto period = Dates.Read(acceptPicture);
    if (!period)
        return;
    Pointer.emplace();
    FromDateUS = period->FirstUS();
    ToDateUS = period->LastUS();
    SSPanel1.SetCaption(period->Heading());
    // A refused period leaves its heading and the hourglass.
    if (!Dates.IsInOrder(*period))
        return;
    if (!period->isDay || CheckDayActivity()) {
        FillJournal();
        Browse();
    }
    Pointer.reset();
}

bool Recettes::CheckDayActivity()
{
    QueryText = "Select * from Actes where date >=#" + FromDateUS + "# and date <=#" + ToDateUS + "#";
    if (TheDatabase.OpenRecordset(QueryText).RecordCount() > 0)
        return true;
    MsgBox("Aucune activité pour cette période", Icon::Critical, "ZEP Lumo");
    return false;
}

void Recettes::Browse()
{
    Dates.hide();
    SSTab1.setEnabled(true);
    Image1[OtherDates].show();
    switch (SSTab1.currentIndex()) {
    case RecapTab:
        return Grid1.setFocus();
    case CodesTab:
        return Grid3.setFocus();
    default:
        Grid2.setFocus();
    }
}

void Recettes::OpenScopePanel()
{
    SSOption1[CurrentUnit].setText(PlainCaption(Grid1.Text(Grid1.Row(), Unit).trimmed()));
    SSOption1[Nothing].setChecked(true);
    SSTab1.setEnabled(false);
    Image1[OtherDates].hide();
    FloatOver(SSPanel3, SSTab1);
    SSOption1[Nothing].setFocus();
}

void Recettes::CloseScopePanel()
{
    SSPanel3.hide();
    Browse();
}

} // namespace cash
