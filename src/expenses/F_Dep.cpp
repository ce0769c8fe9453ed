#include "expenses/F_Dep.h"

#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace expenses {

namespace {

constexpr auto TotalMask = "### ### ###.00";

/// The lines of ConfigLines that receive the dates of a selection.
enum : std::size_t { FirstDate, LastDate };

} // namespace

F_Dep::F_Dep()
    : Form("F_Dep"), Grid1("Grid1", {{"N°", 700, Qt::AlignCenter},
                                     {"Date", 1200, Qt::AlignCenter},
                                     {"Objet", 6000},
                                     {"Montant", 1600, Qt::AlignRight}})
{
    BuildForm();
    On(Grid1, &Grid::Click, *this, &F_Dep::Grid1_Click);
    On(Grid1, &Grid::DblClick, *this, &F_Dep::Grid1_DblClick);
    On(Grid1, &Grid::Entered, *this, &F_Dep::OpenChange); // acts on the highlighted row
    OnEach(Crecettes, &Picture::clicked, *this, &F_Dep::Crecettes_Click);
    OnEach(SSPanel3.Image2, &Picture::clicked, *this, &F_Dep::Image2_Click);
    OnEach(Dates.Image2, &Picture::clicked, *this, &F_Dep::Image2_Click);
}

void F_Dep::Form_Load()
{
    setWindowTitle("   Dépenses  ");
    CenterForm(*this);
    EntryIsNew = false;
    Dates.SetToday();
    Image2_Click(PeriodChooser::AcceptDay);
}

void F_Dep::Crecettes_Click(int index)
{
    switch (index) {
    case New:
        return EnterNew();
    case Modify:
        return OpenChange();
    case Remove:
        return DeleteExpense();
    case Select:
        return ChooseDates();
    default:
        Unload();
    }
}

void F_Dep::Image2_Click(int index)
{
    if (index == EntryPanel::Accept)
        AcceptEntry();
    else if (PeriodChooser::IsAccept(index))
        ListChosenDates(index);
    else
        Browse();
}

void F_Dep::EscapePressed()
{
    if (SSPanel3.isVisibleTo(this) || Dates.isVisibleTo(this))
        Browse();
}

void F_Dep::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

void F_Dep::Grid1_DblClick()
{
    Grid1_Click();
    OpenChange();
}

// -- selection

void F_Dep::ChooseDates()
{
    Grid1.setEnabled(false);
    ShowPictures(false);
    Dates.ShowOver(Grid1);
}

void F_Dep::ListChosenDates(int acceptPicture)
{
    const auto period = Dates.Read(acceptPicture);
    if (!period)
        return;
    ConfigLines[FirstDate] = period->first;
    QString heading = "Dépenses du " + period->first;
    QString selection = "select * from Recettes where date = #" + period->FirstUS() + "# order by num";
    if (!period->isDay) {
        ConfigLines[LastDate] = period->last;
        heading += " au " + period->last;
        selection = "select * from Recettes where date >=#" + period->FirstUS() + "# and date <=#" + period->LastUS() +
                    "# order by date, num";
    }
    SSPanel1.SetCaption(heading); // also of a period that is refused next
    if (!Dates.IsInOrder(*period))
        return;
    FillExpenses(selection);
    Browse();
}

void F_Dep::FillExpenses(const QString& selection)
{
    const Hourglass pointer;
    List1.Clear();
    const dao::ReadTransaction oneState(TheDatabase);
    QueryText = selection;
    ListRecordset = TheDatabase.OpenRecordset(QueryText);
    for (; !ListRecordset.IsEOF(); ListRecordset.MoveNext()) {
        const dao::Field object = ListRecordset["objet"];
        ShowRow(List1.Add(ListRecordset["num"].Key()),
                {TextOrNothing(ListRecordset["Date"]), object.IsNull() ? QString() : object.Text().trimmed(),
                 TextOrNothing(ListRecordset["montant"])});
    }
    ShowTotal();
    if (!List1.IsEmpty())
        Grid1.SelectRow(0);
}

void F_Dep::ShowRow(int row, const TypedExpense& expense)
{
    Grid1.SetText(row, Number, QString::number(row + 1));
    Grid1.SetText(row, Date, expense.date);
    Grid1.SetText(row, Object, expense.object.isNull() ? QString() : " " + expense.object);
    Grid1.SetText(row, Amount, expense.amount.isEmpty() ? QString() : expense.amount + " ");
}

void F_Dep::ShowTotal()
{
    Label5.setText("");
    double total = 0;
    for (int row = 0; row < Grid1.Rows(); ++row)
        total += Val(Grid1.Text(row, Amount));
    if (total != 0)
        Label5.setText(" " + Format(total, TotalMask));
}

// -- entry

void F_Dep::EnterNew()
{
    EntryIsNew = true;
    OpenEntry("NOUVELLE DEPENSE", {ConfigLines[LastDate].trimmed(), "", ""});
}

void F_Dep::OpenChange()
{
    if (List1.IsEmpty())
        return;
    ChangedRow = Grid1.Row();
    SelectedNum = List1.KeyOf(ChangedRow);
    if (!FindKey(ListRecordset, SelectedNum))
        return DropLine(ChangedRow);
    EntryIsNew = false;
    OpenEntry("MODIFICATION", {TextOrNothing(ListRecordset["Date"]), TextOrNothing(ListRecordset["objet"]),
                               TextOrNothing(ListRecordset["montant"])});
}

void F_Dep::OpenEntry(const QString& title, const TypedExpense& shown)
{
    Grid1.setEnabled(false);
    ShowPictures(false);
    SSPanel3.ShowOver(Grid1, title, shown);
}

void F_Dep::AcceptEntry()
{
    const auto typed = SSPanel3.Read();
    if (!typed)
        return;
    try {
        WriteExpense(*typed);
    } catch (const RuntimeError& error) {
        switch (error.Code()) {
        case Error::ConversionFailed: // 29/02/2100, which only a date field takes for a day
            return SSPanel3.Refuse("Date incorrecte", SSPanel3.Date);
        case Error::Overflow:
            return SSPanel3.Refuse("Montant incorrect", SSPanel3.Amount);
        case Error::RecordDeleted:
            Browse();
            return DropLine(ChangedRow);
        default:
            throw;
        }
    }
    ShowSaved(*typed);
    Browse();
}

void F_Dep::WriteExpense(const TypedExpense& typed)
{
    if (!EntryIsNew && !FindKey(ListRecordset, SelectedNum))
        throw RuntimeError(Error::RecordDeleted);
    ListRecordset.LockEdits(true);
    if (EntryIsNew)
        ListRecordset.AddNew();
    else
        ListRecordset.Edit();
    try {
        ListRecordset["Date"] = typed.date;
        ListRecordset["MM"] = Val(typed.date.mid(3, 2));
        ListRecordset["objet"] = typed.object;
        ListRecordset["montant"] = Val(typed.amount);
    } catch (const RuntimeError&) {
        ListRecordset.CancelUpdate(); // releases the lock while the user corrects the entry
        throw;
    }
    ListRecordset.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

void F_Dep::ShowSaved(const TypedExpense& typed)
{
    ShowRow(EntryIsNew ? List1.Add(ListRecordset.LastKey()) : ChangedRow, typed);
    MsgBox("Enregistrement terminé", Icon::Information, "ZEP Lumo");
    Grid1.setEnabled(true);
    ShowTotal();
    if (EntryIsNew)
        Grid1.scrollToBottom();
    if (List1.Count() == 1)
        Grid1.SelectRow(0);
}

void F_Dep::Browse()
{
    SSPanel3.hide();
    Dates.hide();
    ShowPictures(true);
    if (!List1.IsEmpty())
        Grid1.setEnabled(true);
    if (Grid1.isEnabled())
        Grid1.setFocus();
    else
        setFocus(); // not a picture, where Enter would click it
}

void F_Dep::ShowPictures(bool shown)
{
    for (const int picture : {New, Modify, Remove, Select})
        Crecettes[picture].setVisible(shown);
}

// -- deletion

void F_Dep::DeleteExpense()
{
    const int row = Grid1.Row();
    if (List1.IsEmpty() || !ConfirmsDeletion(Grid1, row, QString::number(row + 1)))
        return;
    if (!DeleteKey(ListRecordset, List1.KeyOf(row)))
        return DropLine(row);
    dao::DBEngine.Idle(dao::RefreshCache);
    RemoveLine(row);
    ShowTotal();
}

void F_Dep::DropLine(int row)
{
    ReportDeletedLine();
    RemoveLine(row);
    ShowTotal();
}

void F_Dep::RemoveLine(int row)
{
    List1.Remove(row);
    if (!List1.IsEmpty())
        return;
    Grid1.setEnabled(false);
    setFocus();
}

} // namespace expenses
