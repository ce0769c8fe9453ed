#include "acts/j_Client.h"

#include "acts/New_Rech.h"
#include "acts/PatientCells.h"
#include "core/globals.h"
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
    List1.Clear();
    Statuses.Clear();
    {
        const Hourglass pointer;
        const dao::ReadTransaction oneState(TheDatabase);
        PatientSet = TheDatabase.OpenRecordset(ListQuery);
        for (; !PatientSet.IsEOF() && List1.Count() < MostListed; PatientSet.MoveNext())
            ListPatient();
    }
    if (List1.Count() == MostListed)
        MsgBox("Limite de capacité d'affichage", Icon::Critical, "ATTENTION");
    Grid1.SelectRow(0);
    hint.setVisible(List1.IsEmpty());
    Statuses.ShowCounts(LT, PlainText);
}

void j_Client::ListPatient()
{
    const int row = List1.Add(PatientSet["num"].Key());
    Grid1.SetText(row, Number, Str(row + 1));
    Grid1.SetText(row, LastName, AfterBlank(PatientSet["nom"]));
    Grid1.SetText(row, FirstName, AfterBlank(PatientSet["Prenom"]));
    Grid1.SetText(row, Sex, SexLetter(PatientSet["Sexe"]));
    Grid1.SetText(row, Telephone, AfterBlank(PatientSet["tel"]));
    Grid1.SetText(row, Town, AfterBlank(PatientSet["ville"]));
    Grid1.SetText(row, Diagnosis, AfterBlank(PatientSet["diagno"]));
    Statuses.Show(row, PatientSet["Flag_H"]);
}

void j_Client::TogglePatientArchive()
{
    if (List1.IsEmpty())
        return;
    Statuses.Toggle(Grid1.Row());
    Statuses.ShowCounts(LT, PlainText);
}

void j_Client::SavePatientToggles()
{
    if (!Statuses.TogglesPending())
        return;
    const Hourglass pointer;
    Statuses.Save(PatientSet);
}

} // namespace acts
