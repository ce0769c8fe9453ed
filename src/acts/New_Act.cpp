#include "acts/New_Act.h"

#include "acts/New_Mecano.h"
#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/host/Host.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace acts {

namespace {

/// The list line numbered by a field of an act; empty for Null and for a number outside the list.
QString LineOf(const QStringList& list, const dao::Field& number)
{
    return number.IsNull() ? QString() : list.value(number.Long());
}

Int16 CountIn(const Grid& grid, int row, int column)
{
    return RoundToInt(Val(grid.Text(row, column)));
}

bool ConfirmsArchiving()
{
    return MsgBox("Confirmer archivage acte ('R-')", Icon::Question, "Attention", Buttons::YesNo) == Answer::Yes;
}

constexpr int UnitTwips = 1780;
constexpr int CountTwips = 840;
constexpr int StatusTwips = 580;

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
                      {"Règl", StatusTwips, Qt::AlignCenter, PayCodeTips()},
                      {"Réc.", StatusTwips, Qt::AlignCenter},
                      {"Arch.", StatusTwips, Qt::AlignCenter}})
{
    BuildForm();
    Text1.SelectedOnFocus = DateLength;
    On(Grid1, &Grid::Click, *this, &New_Act::Grid1_Click);
    On(Grid2, &Grid::Click, *this, &New_Act::Grid2_Click);
    On(Grid2, &Grid::DblClick, *this, &New_Act::Grid2_DblClick);
    On(Grid2, &Grid::Entered, *this, &New_Act::Grid2_DblClick);
    OnEach(Image1, &Picture::clicked, *this, &New_Act::Image1_Click);
    On(SSTab1, &TabStrip::currentChanged, *this, &New_Act::FocusShare);
    OnEach(Option1, &OptionButton::Chosen, *this, &New_Act::Option1_Click);
    On(Image2, &Picture::clicked, *this, &New_Act::Image2_Click);
    On(Text1, &DateField::Entered, *this, [this] { Image1[LeaveDisplay].setFocus(); });
    On(Text1, &DateField::DateRefused, *this, [this] { Text1.setFocus(); });
}

void New_Act::Form_Load()
{
    CenterForm(*this);
    setWindowTitle(" ");
    SSTab1.setCurrentIndex(SheetPage);
    LoadLookupLists();
    DayLabel.setText(DateText(host::Today()));
    Text1.setText(DateText(host::Today()));
    ShowDay();
    LoadOption();
    Grid2.setFocus();
}

void New_Act::LoadLookupLists()
{
    PermnTable.MoveFirst();
    CardDisplay = TextOrNothing(PermnTable["RC"]).trimmed();
    SSOption2[CardDisplay == "OUI" ? LimitedDisplay : FullDisplay].setChecked(true);
}

void New_Act::LoadOption()
{
    PermnTable.MoveFirst();
    const int option = PermnTable["nbre"].IsNull() ? 0 : PermnTable["nbre"].Long();
    if (option < 0 || option >= Option1.Size())
        return;
    Option1[option].setChecked(true);
    Option1_Click(option);
}

void New_Act::Image1_Click(int index)
{
    switch (index) {
    case DayBefore:
        return MoveDay(-1);
    case DayAfter:
        return MoveDay(1);
    case Toggle:
        return ToggleActArchive();
    case PickDay:
        if (const auto chosen = PickDateFromToday()) {
            SaveActToggles();
            DayLabel.setText(*chosen);
            ShowDay();
        }
        return;
    default:
        SaveActToggles();
        SaveCardDisplay();
        Unload();
    }
}

void New_Act::MoveDay(int days)
{
    SaveActToggles();
    DayLabel.setText(DateText(AddDays(DateValue(DayLabel.text().trimmed()), days)));
    ShowDay();
}

/// The display's first choice: the date on its page is idle.
void New_Act::FocusShare(int page)
{
    for (int option = 0; page == DisplayPage && option < Option1.Size(); ++option)
        if (Option1[option].isChecked())
            Option1[option].setFocus();
}

void New_Act::Option1_Click(int index)
{
    OptionLabel.setText(Option1[index].text());
}

void New_Act::Image2_Click()
{
    SelectedOption = 0;
    for (int option = 0; option < Option1.Size(); ++option)
        if (Option1[option].isChecked())
            SelectedOption = option;
    DialogResult = SelectedOption;
    PickedDate = Option1[SelectedOption].text();

    New_Mecano actualisation;
    TheDesk().ShowModal(actualisation);
    if (DialogResult == ResultCancelled)
        MsgBox("Modification annulée", Icon::Critical, "Lumo ZEP");
    else
        MsgBox("Modifications enregistrées avec succès", Icon::Information, "ZEP Lumo");

    // Also after a cancel: the option is saved, with the date of the last run.
    PermnTable.MoveFirst();
    PermnTable.Edit();
    PermnTable["Date"] = PickedDate;
    PermnTable["nbre"] = SelectedOption;
    PermnTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
    Unload();
}

void New_Act::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

void New_Act::Grid2_Click()
{
    Grid2.SelectRow(Grid2.Row());
}

void New_Act::Grid2_DblClick()
{
    Grid2_Click();
    Image1_Click(Toggle);
}

void New_Act::ShowDay()
{
    DayDateUS = QueryDate(DayLabel.text().trimmed());
    if (DayHasActs()) {
        const Hourglass pointer;
        FillDaySheet();
        return;
    }
    ClearDaySheet();
    MsgBox("Aucune activité enregistrée le " + DayLabel.text(), Icon::Critical, "Lumo_ZEP");
}

bool New_Act::DayHasActs()
{
    QueryText = "Select * from Actes where date =#" + DayDateUS + "#";
    DayCount = TheDatabase.OpenRecordset(QueryText);
    return DayCount.RecordCount() >= 1;
}

void New_Act::ClearDaySheet()
{
    Services.Clear();
    List1.Clear();
    Statuses.Clear();
    for (int total = RecentSum; total <= WholeSum; ++total) {
        LT[total].setText("");
        Label4[total].setText("");
    }
    SheetRecent = SheetArchived = SheetTotal = 0;
}

/// Reopened at each fill: a new fill also lists acts added meanwhile, and ActesRS must contain them to save them.
void New_Act::OpenRecords()
{
    PatientsRS = TheDatabase.OpenRecordset("select * from Patients order by num");
    ActesRS = TheDatabase.OpenRecordset("select * from Actes order by num");
}

void New_Act::FillDaySheet()
{
    ClearDaySheet();
    OpenRecords();
    const dao::ReadTransaction oneLock(TheDatabase);
    QueryText = "Select * from Presta order by ordre";
    PrestaList = TheDatabase.OpenRecordset(QueryText);
    for (; !PrestaList.IsEOF(); PrestaList.MoveNext()) {
        AddServiceRow();
        AddServiceActs();
    }
    Grid1.SelectRow(0);
    if (!List1.IsEmpty())
        Grid2.SelectRow(0);
    Statuses.ShowCounts(LT, Str);
    ShowServiceTotals();
}

void New_Act::AddServiceRow()
{
    const QString ofService = "# and num_presta = " + QString::number(PrestaList["num"].Key());
    const int row = Services.Add(PrestaList["num"].Key());
    Grid1.SetText(row, Unit, " " + TextOrNothing(PrestaList["denom"]));

    QueryText = "select count(num) as S1 from Actes where date =#" + DayDateUS + ofService;
    DayCount = TheDatabase.OpenRecordset(QueryText);
    if (DayCount["S1"].Long() > 0)
        Grid1.SetText(row, Total, Str(DayCount["S1"].Long()));

    QueryText = "select count(num) as S2 from Actes where flag_H = 0 and date =#" + DayDateUS + ofService;
    DayCount = TheDatabase.OpenRecordset(QueryText);
    if (DayCount["S2"].Long() > 0)
        Grid1.SetText(row, Recent, Str(DayCount["S2"].Long()));
}

void New_Act::AddServiceActs()
{
    QueryText = "Select * from Actes where date =#" + DayDateUS +
                "# and num_presta = " + QString::number(PrestaList["num"].Key()) + " order by date";
    ServiceActs = TheDatabase.OpenRecordset(QueryText);
    for (; !ServiceActs.IsEOF(); ServiceActs.MoveNext())
        AddAct();
}

void New_Act::AddAct()
{
    const int row = List1.Add(ServiceActs["num"].Key());
    Grid2.SetText(row, ActUnit, " " + TextOrNothing(PrestaList["denom"]));
    if (!ServiceActs["num_patient"].IsNull() && FindKey(PatientsRS, ServiceActs["num_patient"].Key()))
        Grid2.SetText(row, Patient,
                      " " + TextOrNothing(PatientsRS["nom"]).trimmed() + " " +
                          TextOrNothing(PatientsRS["Prenom"]).trimmed());
    Grid2.SetText(row, ServiceDate, TextOrNothing(ServiceActs["date_Presta"]));
    Grid2.SetText(row, Hour, LineOf(List_HH, ServiceActs["HH"]));
    Grid2.SetText(row, Type, TextOrNothing(ServiceActs["Type"]));
    Grid2.SetText(row, PayCode, LineOf(List_R, ServiceActs["flag_R"]));
    Statuses.Show(row, ServiceActs["Flag_H"]);
}

void New_Act::ShowServiceTotals()
{
    // Summed from the grid, where an empty cell counts as 0.
    for (int row = 0; row < Services.Count(); ++row) {
        const Int16 all = CountIn(Grid1, row, Total);
        const Int16 recent = CountIn(Grid1, row, Recent);
        SheetTotal += all;
        SheetRecent += recent;
        if (all - recent > 0)
            Grid1.SetText(row, Archived, Str(all - recent));
    }
    SheetArchived = SheetTotal - SheetRecent;
    if (SheetRecent > 0)
        Label4[RecentSum].setText(Str(SheetRecent));
    if (SheetArchived > 0)
        Label4[ArchivedSum].setText(Str(SheetArchived));
    if (SheetTotal >= 1)
        Label4[WholeSum].setText(Str(SheetTotal));
}

// -- archiving

void New_Act::ToggleActArchive()
{
    if (List1.IsEmpty())
        return;
    const int row = Grid2.Row();
    if (Statuses.IsRecent(row) && Grid2.Text(row, PayCode).trimmed() == "R-" && !ConfirmsArchiving())
        return;
    Statuses.Toggle(row);
    Statuses.ShowCounts(LT, Str);
}

void New_Act::SaveActToggles()
{
    Statuses.Save(ActesRS);
}

void New_Act::SaveCardDisplay()
{
    const QString wanted = SSOption2[LimitedDisplay].isChecked() ? "OUI" : "";
    if (wanted == CardDisplay)
        return;
    PermnTable.MoveFirst();
    PermnTable.Edit();
    PermnTable["RC"] = wanted;
    PermnTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

} // namespace acts
