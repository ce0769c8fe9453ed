#include "acts/j_Client.h"

#include "acts/New_Rech.h"
#include "acts/PatientCells.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace acts {

j_Client::j_Client()
    : Form("j_Client"), Grid1("Grid1", {{"N°", 600, Qt::AlignCenter},
                                        {"Nom", 2020},
                                        {"Prénom", 2020},
                                        {"Sexe", 590, Qt::AlignCenter},
                                        {"Tél", 1290},
                                        {"Ville", 1440},
                                        {"Diagno Initial", 2030},
                                        {"Réc.", 580, Qt::AlignCenter},
                                        {"Arch.", 580, Qt::AlignCenter}})
{
    BuildForm();
    On(Grid1, &Grid::Click, *this, &j_Client::Grid1_Click);
    On(Grid1, &Grid::DblClick, *this, &j_Client::Grid1_DblClick);
    On(Grid1, &Grid::Entered, *this, &j_Client::Grid1_DblClick);
    OnEach(Crecettes, &Picture::clicked, *this, &j_Client::Crecettes_Click);
}

void j_Client::Form_Load()
{
    constexpr int roomForTelephones = 2400; // twips shared by the columns of names, telephones and towns
    setWindowTitle(" ");
    resize(width() + ScaledPixelsOf(roomForTelephones), height());
    CenterForm(*this);
    TogglesPending = false;
    Grid1.setFocus();
    Crecettes_Click(Search);
}

void j_Client::Crecettes_Click(int index)
{
    switch (index) {
    case Archive:
        return TogglePatientArchive();
    case Search: {
        New_Rech search;
        return TheDesk().ShowModal(search);
    }
    default:
        SavePatientToggles();
        Unload();
    }
}

void j_Client::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

void j_Client::Grid1_DblClick()
{
    Grid1_Click();
    TogglePatientArchive();
}

void j_Client::FillPatientGrid()
{
    Grid1.ClearToOneRow();
    List1.clear();
    TogglesPending = false;
    RecentPatients = ArchivedPatients = 0;
    {
        const Hourglass pointer;
        const dao::ReadTransaction oneState(TheDatabase);
        PatientSet = TheDatabase.OpenRecordset(ListQuery);
        for (int row = 0; !PatientSet.IsEOF() && row < MostListed; ++row, PatientSet.MoveNext())
            ListPatient(row);
    }
    if (List1.size() == MostListed)
        MsgBox("Limite de capacité d'affichage", Icon::Critical, "ATTENTION");
    Grid1.SelectRow(0);
    hint.setVisible(List1.isEmpty());
    ShowCounts();
}

void j_Client::ListPatient(int row)
{
    if (row > 0)
        Grid1.AppendRow();
    Grid1.SetText(row, Number, Str(row + 1));
    Grid1.SetText(row, LastName, AfterBlank(PatientSet["nom"]));
    Grid1.SetText(row, FirstName, AfterBlank(PatientSet["Prenom"]));
    Grid1.SetText(row, Sex, SexLetter(PatientSet["Sexe"]));
    Grid1.SetText(row, Telephone, AfterBlank(PatientSet["tel"]));
    Grid1.SetText(row, Town, AfterBlank(PatientSet["ville"]));
    Grid1.SetText(row, Diagnosis, AfterBlank(PatientSet["diagno"]));
    const bool archived = IsArchivedPatient(PatientSet["Flag_H"]);
    Grid1.SetText(row, archived ? IsArchived : IsRecent, "OUI");
    ++(archived ? ArchivedPatients : RecentPatients);
    List1 << PatientSet["num"].Key();
}

void j_Client::TogglePatientArchive()
{
    if (List1.isEmpty())
        return;
    const int row = Grid1.Row();
    const bool recent = !Grid1.Text(row, IsRecent).trimmed().isEmpty();
    Grid1.SetText(row, IsRecent, recent ? "" : "OUI");
    Grid1.SetText(row, IsArchived, recent ? "OUI" : "");
    RecentPatients += recent ? -1 : 1;
    ArchivedPatients += recent ? 1 : -1;
    ShowCounts();
    TogglesPending = true;
}

void j_Client::ShowCounts()
{
    ListedPatients = Sum(RecentPatients, ArchivedPatients);
    const auto show = [this](int count, int patients) {
        LT[count].setText(patients < 1 ? QString() : QString::number(patients));
    };
    show(Recent, RecentPatients);
    show(Archived, ArchivedPatients);
    show(Listed, ListedPatients);
}

void j_Client::SavePatientToggles()
{
    if (!TogglesPending)
        return;
    const Hourglass pointer;
    PatientSet.LockEdits(true);
    dao::Transaction wholeList(TheDatabase);
    for (int row = 0; row < List1.size(); ++row) {
        if (!FindKey(PatientSet, List1[row]))
            continue;
        PatientSet.Edit();
        PatientSet["Flag_H"] = Grid1.Text(row, IsArchived).trimmed() == "OUI" ? 1 : 0;
        PatientSet.Update();
    }
    wholeList.Commit();
    dao::DBEngine.Idle(dao::RefreshCache);
    TogglesPending = false;
}

} // namespace acts
