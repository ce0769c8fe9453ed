#include "catalogue/J_PROD.h"

#include "core/globals.h"
#include "core/lists.h"
#include "core/opening.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace catalogue {

J_PROD::J_PROD()
    : Form("J_PROD"),
      Grid1("Grid1", {{"N°", 600, Qt::AlignCenter}, {"Dénmination", 3230}, {"Prix", 820, Qt::AlignRight}})
{
    BuildForm();
    constexpr int selectedOnFocus = 60;
    NameField.SelectedOnFocus = PriceField.SelectedOnFocus = selectedOnFocus;
    On(Grid1, &Grid::Click, *this, &J_PROD::Grid1_Click);
    On(Grid1, &Grid::DblClick, *this, &J_PROD::Grid1_DblClick);
    On(Grid1, &Grid::Entered, *this, &J_PROD::Grid1_DblClick);
    OnEach(Image1, &Picture::clicked, *this, &J_PROD::Image1_Click);
    OnEach(Image2, &Picture::clicked, *this, &J_PROD::Image2_Click);
    OnEach(Crecettes, &Picture::clicked, *this, &J_PROD::Crecettes_Click);
    On(NameField, &TextBox::Entered, *this, [this] { PriceField.setFocus(); });
}

void J_PROD::Form_Load()
{
    setWindowTitle(" ");
    CenterForm(*this);
    OpenDataFiles(); // replaces the handles of the run
    IsNew = false;
    LoadServices();
    OrderDirty = false;
}

void J_PROD::Crecettes_Click(int index)
{
    switch (index) {
    case New:
        return EnterNew();
    case Modify:
        return EnterModification();
    case Delete:
        return DeleteService();
    default:
        if (OrderDirty)
            WriteServiceOrder();
        Unload();
    }
}

void J_PROD::Image1_Click(int index)
{
    MoveService(static_cast<Move>(index));
}

void J_PROD::Image2_Click(int index)
{
    if (index == Accept)
        AcceptEntry();
    else
        CloseEntry();
}

void J_PROD::EscapePressed()
{
    if (SSPanel3.isVisibleTo(this))
        CloseEntry();
}

void J_PROD::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

void J_PROD::Grid1_DblClick()
{
    Grid1_Click();
    EnterModification();
}

void J_PROD::OpenServices()
{
    QueryText = "select * from Presta order by ordre";
    ServiceRecords = TheDatabase.OpenRecordset(QueryText);
}

void J_PROD::LoadServices()
{
    OpenServices();
    List1.DropKeys();
    if (ServiceRecords.RecordCount() == 0)
        return EnterNew();

    for (; !ServiceRecords.IsEOF(); ServiceRecords.MoveNext()) {
        const int row = List1.Add(ServiceRecords["num"].Key());
        Grid1.SetText(row, Number, PlainText(row + 1));
        Grid1.SetText(row, Name, " " + TextOrNothing(ServiceRecords["denom"]).trimmed());
        if (!ServiceRecords["prix"].IsNull())
            Grid1.SetText(row, Price, ServiceRecords["prix"].Text() + " ");
    }
    Grid1.SetRow(0);
    Grid1_Click();
    Grid1.setFocus();
}

// -- entry

void J_PROD::EnterNew()
{
    IsNew = true;
    NameField.clear();
    PriceField.clear();
    ShowEntry("NOUVELLE PRESTATION");
}

void J_PROD::EnterModification()
{
    if (List1.IsEmpty())
        return;
    if (LoadServiceFields())
        ShowEntry("MODIFICATION");
    else
        ReportGone();
}

bool J_PROD::LoadServiceFields()
{
    if (!FindKey(ServiceRecords, List1.KeyOf(Grid1.Row())))
        return false;
    NameField.setText(TextOrNothing(ServiceRecords["denom"]));
    PriceField.setText(TextOrNothing(ServiceRecords["prix"]));
    return true;
}

void J_PROD::ShowEntry(const QString& heading)
{
    SSPanel2.SetCaption(heading);
    Grid1.setEnabled(false);
    FloatOver(SSPanel3, Grid1);
    ShowServiceButtons(false);
    NameField.setFocus();
}

void J_PROD::AcceptEntry()
{
    for (TextBox* const field : {&NameField, static_cast<TextBox*>(&PriceField)}) {
        if (!field->text().trimmed().isEmpty())
            continue;
        MsgBox("saisie incomplète", Icon::Critical, "ATTENTION");
        return field->setFocus();
    }
    SaveService();
    CloseEntry();
}

void J_PROD::CloseEntry()
{
    SSPanel3.hide();
    ShowServiceButtons(true);
    if (List1.IsEmpty())
        return Crecettes[New].setFocus();
    Grid1.setEnabled(true);
    Grid1.setFocus();
}

void J_PROD::ShowServiceButtons(bool shown)
{
    for (const int action : {New, Modify, Delete})
        Crecettes[action].setVisible(shown);
}

void J_PROD::SaveService()
{
    if (IsNew)
        AddService();
    else if (!ChangeService())
        return ReportGone();
    dao::DBEngine.Idle(dao::RefreshCache);
    MsgBox("Enregistrement réussi", Icon::Information, "Lumo Orvane");
    Grid1.setEnabled(true);
    OrderDirty = true;
}

void J_PROD::AddService()
{
    OpenServices(); // to see rows that others have added
    ServiceRecords.LockEdits(true);
    ServiceRecords.AddNew();
    WriteFields(List1.Count());
    ServiceRecords.Update();
    ShowFields(List1.Add(ServiceRecords.LastKey()));
}

bool J_PROD::ChangeService()
{
    dao::Transaction saving(TheDatabase); // so that nobody deletes the service between search and change
    const int row = Grid1.Row();
    if (!FindKey(ServiceRecords, List1.KeyOf(row)))
        return false;
    ServiceRecords.LockEdits(true);
    ServiceRecords.Edit();
    WriteFields(row);
    ServiceRecords.Update();
    saving.Commit();
    ShowFields(row);
    return true;
}

void J_PROD::WriteFields(int row)
{
    ServiceRecords["denom"] = NameField.text().trimmed();
    ServiceRecords["prix"] = Val(PriceField.text());
    ServiceRecords["Ordre"] = Int16(row);
}

void J_PROD::ShowFields(int row)
{
    Grid1.SetText(row, Number, PlainText(row + 1));
    Grid1.SetText(row, Name, " " + NameField.text());
    Grid1.SetText(row, Price, PriceField.text() + " ");
}

// -- deletion

void J_PROD::DeleteService()
{
    const int row = Grid1.Row();
    if (row == 0)
        return;
    const dao::Key service = List1.KeyOf(row);
    if (IsUsedByAct(service))
        return ReportInUse();
    if (!ConfirmsDeletion(Grid1, row, PlainText(row + 1)))
        return;
    switch (Remove(service)) {
    case Removal::InUse:
        return ReportInUse();
    case Removal::Gone:
        return ReportGone();
    case Removal::Done:
        DropRow();
    }
}

J_PROD::Removal J_PROD::Remove(dao::Key service)
{
    dao::Transaction removing(TheDatabase);
    if (IsUsedByAct(service)) // by an act added while the question was open
        return Removal::InUse;
    if (!DeleteKey(ServiceRecords, service))
        return Removal::Gone;
    removing.Commit();
    return Removal::Done;
}

bool J_PROD::IsUsedByAct(dao::Key service)
{
    // In index order, so that only one act is read.
    QueryText = "Select * from Actes where num_presta = " + QString::number(service) + " order by date, montant";
    return TheDatabase.OpenRecordset(QueryText).RecordCount() != 0;
}

void J_PROD::ReportInUse()
{
    MsgBox("Cette prestation est incluse dans un acte", Icon::Critical, "ATTENTION");
}

void J_PROD::ReportGone()
{
    ReportDeletedLine();
    DropRow();
}

void J_PROD::DropRow()
{
    List1.Remove(Grid1.Row());
    OrderDirty = true;
    if (!List1.IsEmpty())
        return;
    Grid1.setEnabled(false);
    IsNew = true;
}

// -- order

void J_PROD::MoveService(Move direction)
{
    const int last = List1.Count() - 1;
    const int barrier = direction == MoveUp ? 1 : last;
    const int here = Grid1.Row();
    if (last < 1 || here == 0 || here == barrier)
        return;
    const int other = direction == MoveUp ? here - 1 : here + 1;
    for (const int column : {Name, Price}) {
        const QString moved = Grid1.Text(here, column).trimmed();
        Grid1.SetText(here, column, Grid1.Text(other, column).trimmed());
        Grid1.SetText(other, column, moved);
    }
    List1.SwapKeys(here, other);
    Grid1.SetRow(other);
    Grid1_Click();
    OrderDirty = true;
}

void J_PROD::WriteServiceOrder()
{
    dao::Transaction writing(TheDatabase);
    ServiceRecords.LockEdits(true);
    for (int place = 0; place < List1.Count(); ++place) {
        if (!FindKey(ServiceRecords, List1.KeyOf(place)))
            continue;
        ServiceRecords.Edit();
        ServiceRecords["Ordre"] = Int16(place);
        ServiceRecords.Update();
    }
    writing.Commit();
    dao::DBEngine.Idle(dao::RefreshCache);
}

} // namespace catalogue
