#include "acts/F_Sppr.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/printing.h"
#include "core/windows.h"
#include "data/PaymentCode.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/host/Files.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace acts {

namespace {

constexpr auto Template = "ZEP_Supp.RPT";

/// A looked-up name after a blank; empty when it is Null or its row no longer exists.
QString FoundName(const std::optional<QStringList>& names, qsizetype field)
{
    return names && !names->at(field).isNull() ? " " + names->at(field) : QString();
}

} // namespace

F_Sppr::F_Sppr()
    : Form("F_Sppr"), Grid1("Grid1", {{"Date", 1080, Qt::AlignCenter},
                                      {"Heure", 660, Qt::AlignCenter},
                                      {"Unité", 1460},
                                      {"Code", 700, Qt::AlignCenter},
                                      {"Regl.", 700, Qt::AlignCenter, PayCodeTips()},
                                      {"Nom", 2050},
                                      {"Prénom", 2030},
                                      {"Date", 1080, Qt::AlignCenter},
                                      {"Heure", 640, Qt::AlignCenter}})
{
    BuildForm();
    Text1.SelectedOnFocus = DateLength;
    On(Grid1, &Grid::Click, *this, &F_Sppr::Grid1_Click);
    OnEach(Image1, &Picture::clicked, *this, &F_Sppr::Image1_Click);
    OnEach(Image2, &Picture::clicked, *this, &F_Sppr::Image2_Click);
    OfferCalendar(Text1);
    On(Text1, &DateField::Entered, *this, [this] { Image2_Click(Accept); });
    OnCommand(Command::Leave, [this] { Unload(); }); // the list's picture is disabled behind the panel
}

void F_Sppr::Form_Load()
{
    constexpr int roomForUnits = 1800; // twips shared by the columns of units and names
    setWindowTitle("  ");
    resize(width() + ScaledPixelsOf(roomForUnits), height());
    CenterForm(*this);
    FillCodeList();
    PrestaByNum = TheDatabase.OpenRecordset("select * from Presta order by num");
    PatientsRS = TheDatabase.OpenRecordset("select * from Patients");
    QueryText = "select * from Actes_Suppr order by Date_Suppr";
    JournalSet = TheDatabase.OpenRecordset(QueryText);
    FillDeletedGrid();
    Grid1.setFocus();
}

void F_Sppr::Image1_Click(int index)
{
    switch (index) {
    case OtherDate:
        return ChooseDate();
    case Remove:
        return DeleteJournalLine();
    case Print:
        return PrintJournal();
    default:
        Unload();
    }
}

void F_Sppr::Image2_Click(int index)
{
    if (index == Cancel)
        return Browse();
    if (!SelectDeletedDate()) {
        Text1.setFocus();
        return;
    }
    FillDeletedGrid();
    Browse();
}

void F_Sppr::EscapePressed()
{
    if (SSPanel2.isVisibleTo(this))
        Image2_Click(Cancel);
}

void F_Sppr::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

void F_Sppr::ChooseDate()
{
    SSFrame1.setEnabled(false);
    FloatOver(SSPanel2, Grid1);
    Text1.setFocus();
}

void F_Sppr::Browse()
{
    SSPanel2.hide();
    SSFrame1.setEnabled(true);
    Grid1.setFocus();
}

void F_Sppr::FillCodeList()
{
    Combo1.clear();
    for (const QString& code : data::PaymentCodes())
        Combo1.addItem(" " + code);
    Combo1.SetListIndex(0);
}

void F_Sppr::FillDeletedGrid()
{
    List1.Clear();
    if (JournalSet.RecordCount() == 0)
        return;
    const Hourglass pointer;
    const dao::ReadTransaction oneLock(TheDatabase);
    NameLookup services(PrestaByNum, {"denom"});
    NameLookup patients(PatientsRS, {"nom", "Prenom"});
    for (JournalSet.MoveFirst(); !JournalSet.IsEOF(); JournalSet.MoveNext())
        ListAct(services, patients);
    Grid1.SelectRow(0);
}

void F_Sppr::ListAct(NameLookup& services, NameLookup& patients)
{
    const int row = List1.Add(JournalSet["num"].Key());
    Grid1.SetText(row, ActDate, TextOrNothing(JournalSet["Date"]));
    Grid1.SetText(row, ActTime, TextOrNothing(JournalSet["Heure"]));
    Grid1.SetText(row, Unit, FoundName(services.Find(JournalSet["num_presta"]), 0));
    Grid1.SetText(row, Code, TextOrNothing(JournalSet["Type"]));
    const dao::Field code = JournalSet["flag_R"];
    Grid1.SetText(row, Payment, code.IsNull() ? QString() : Combo1.itemText(code.Long()));
    const auto& patient = patients.Find(JournalSet["num_patient"]);
    Grid1.SetText(row, LastName, FoundName(patient, 0));
    Grid1.SetText(row, FirstName, FoundName(patient, 1));
    Grid1.SetText(row, RemovalDate, TextOrNothing(JournalSet["Date_Suppr"]));
    Grid1.SetText(row, RemovalTime, TextOrNothing(JournalSet["H_Suppr"]));
}

bool F_Sppr::SelectDeletedDate()
{
    Image2[Accept].setFocus(); // validates a date that is still being typed
    const auto day = TypedDay(Text1.text());
    if (!day) {
        MsgBox("Date incorrecte");
        return false;
    }
    QueryText = "select * from Actes_Suppr where date_suppr =#" + QueryDate(*day) + "# order by Date_Suppr";
    dao::Recordset ofDay = TheDatabase.OpenRecordset(QueryText);
    if (ofDay.RecordCount() == 0) {
        MsgBox("Aucun acte supprimé", Icon::Information, "Lumo ZEP");
        return false;
    }
    JournalSet = ofDay;
    SSPanel1.SetCaption("Actes supprimés le " + *day);
    return true;
}

void F_Sppr::DeleteJournalLine()
{
    const int row = Grid1.Row();
    if (List1.IsEmpty() || !ConfirmsDeletion(Grid1, row, Str(row + 1)))
        return;
    const bool deleted = DeleteKey(JournalSet, List1.KeyOf(row));
    dao::DBEngine.Idle(dao::RefreshCache);
    List1.Remove(row);
    if (deleted)
        MsgBox("Ligne supprimée avec succès", Icon::Information, "Lumo ZEP");
    else
        ReportDeletedLine();
}

void F_Sppr::PrintJournal()
{
    if (List1.IsEmpty())
        return;
    RunPrintStep(Report1, {.reportName = Template,
                           .headings = {{"ch4", SSPanel1.Caption()}},
                           .scratchTable = "Prov",
                           .fillRows = KeyRows(List1.Keys()),
                           .refusalTitle = "Lumo Orvane",
                           .folder = host::FolderOfOwnFile(ProgramFolder, Template),
                           .proposedName = SSPanel1.Caption()});
}

} // namespace acts
