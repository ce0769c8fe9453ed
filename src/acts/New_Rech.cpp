#include "acts/New_Rech.h"

#include "acts/ArchiveColumns.h"
#include "acts/PatientCells.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/forms/KeyFilters.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace acts {

namespace {

template <class Options>
int LastOn(Options& options)
{
    int chosen = -1;
    for (int option = 0; option < options.Size(); ++option)
        if (options[option].isChecked())
            chosen = option;
    return chosen;
}

} // namespace

New_Rech::New_Rech()
    : Form("New_Rech"), Grid2("Grid2", {{"N°", 600, Qt::AlignCenter},
                                        {"Nom", 2020},
                                        {"Prénom", 2020},
                                        {"Né(e) le", 1290, Qt::AlignCenter},
                                        {"Sexe", 590, Qt::AlignCenter},
                                        {"Tél", 1290},
                                        {"Ville", 1440},
                                        {"N° Carte", 1430, Qt::AlignCenter},
                                        {"Arch.", 580, Qt::AlignCenter}})
{
    BuildForm();
    constexpr int selectedOnFocus = 40;
    for (int criterion = CardNumber; criterion <= FirstName; ++criterion)
        Text2[criterion].SelectedOnFocus = selectedOnFocus;
    Text2[CardNumber].KeyPress = [](int& keyCode) { KeyFilterDigits(keyCode); };
    On(Text2[CardNumber], &TextBox::Entered, *this, [this] { Image2_Click(FindNumber); });
    On(Text2[LastName], &TextBox::Entered, *this, [this] { Text2[FirstName].setFocus(); });
    On(Text2[FirstName], &TextBox::Entered, *this, [this] { Image2_Click(FindNames); });
    for (int option = 0; option <= NoCriterion; ++option) {
        On(SSOption1[option], &OptionButton::Entered, *this, [this] { Image2_Click(FindNames); });
        On(SSOption2[option], &OptionButton::Entered, *this, [this] { Image2_Click(FindNames); });
    }
    OnEach(Image2, &Picture::clicked, *this, &New_Rech::Image2_Click);
    OnEach(Image4, &Picture::clicked, *this, &New_Rech::Image4_Click);
    On(Grid2, &Grid::Click, *this, &New_Rech::Grid2_Click);
    On(Grid2, &Grid::DblClick, *this, &New_Rech::Grid2_DblClick);
    On(Grid2, &Grid::Entered, *this, &New_Rech::Grid2_DblClick);
    On(SSTab1, &TabStrip::currentChanged, *this, &New_Rech::ShowCriteria);
}

void New_Rech::Form_Load()
{
    constexpr int roomForTelephones = 1800; // twips shared by the columns of names, telephones and towns
    setWindowTitle(" ");
    resize(width() + ScaledPixelsOf(roomForTelephones), height());
    CenterForm(*this);
    ShowCriteria();
}

void New_Rech::Image2_Click(int index)
{
    Image2[index].SetBorder(false);
    switch (index) {
    case FindNumber:
        return SearchNumber();
    case FindNames:
        return SearchNames();
    default:
        Cancel();
    }
}

void New_Rech::Image4_Click(int index)
{
    if (index == Back)
        ShowCriteria();
    else
        Unload();
}

void New_Rech::EscapePressed()
{
    if (criteria.isVisibleTo(this))
        Cancel();
    else
        ShowCriteria();
}

void New_Rech::Grid2_Click()
{
    Grid2.SelectRow(Grid2.Row());
}

void New_Rech::Grid2_DblClick()
{
    Grid2_Click();
    Image4_Click(Close);
}

void New_Rech::SearchNumber()
{
    if (Text2[CardNumber].text().trimmed().isEmpty())
        return Refuse("N° Omis", CardNumber);
    if (!FindByCard())
        return;
    SelectedPatient = CardResult["num"].Key();
    DialogResult = ResultAccepted;
    Unload();
}

bool New_Rech::FindByCard()
{
    QueryText = "select * from Patients where N_Carte = '" + Text2[CardNumber].text().trimmed() + "'";
    CardResult = TheDatabase.OpenRecordset(QueryText);
    if (CardResult.RecordCount() == 0) {
        Refuse("Numéro inexistant", CardNumber);
        return false;
    }
    CardResult.MoveFirst();
    return true;
}

void New_Rech::SearchNames()
{
    if (Text2[LastName].text().trimmed().isEmpty() && Text2[FirstName].text().trimmed().isEmpty())
        return Refuse("Critères Omis", LastName);
    const auto selection = BuildPatientQuery();
    if (!selection)
        return;
    FillResultGrid(*selection);
    ShowResults();
}

std::optional<QString> New_Rech::BuildPatientQuery()
{
    QueryText = "Select * from Patients";
    bool hasCondition = false;
    const auto require = [&hasCondition](const QString& condition) {
        QueryText += (hasCondition ? " and " : " where ") + condition;
        hasCondition = true;
    };
    QString NomText = Text2[LastName].text().trimmed();
    QString PrenomText = Text2[FirstName].text().trimmed();
    if (!NomText.isEmpty()) {
        NomText = "'" + NomText + "*'";
        require("nom like " + NomText);
    }
    if (!PrenomText.isEmpty()) {
        PrenomText = "'" + PrenomText + "*'";
        require("prenom like " + PrenomText);
    }
    if (const int sex = LastOn(SSOption1); sex < NoCriterion)
        require("Sexe = " + QString::number(sex));
    if (const int status = LastOn(SSOption2); status < NoCriterion)
        require("Flag_H = " + QString::number(status));

    ResultSet = TheDatabase.OpenRecordset(QueryText);
    const bool found = ResultSet.RecordCount() > 0;
    if (!found)
        Refuse("Aucun enregistrement selon ces critères", LastName);
    QueryText += " order by nom,prenom";
    return found ? std::optional(QueryText) : std::nullopt;
}

void New_Rech::FillResultGrid(const QString& selection)
{
    const Hourglass pointer;
    List1.Clear();
    ResultSet.Close(); // otherwise opening the ordered set would make this one read all of its rows
    const dao::ReadTransaction oneState(TheDatabase);
    QueryText = selection;
    ResultSet = TheDatabase.OpenRecordset(QueryText);
    for (; !ResultSet.IsEOF(); ResultSet.MoveNext())
        ListPatient();
    Grid2.SelectRow(0);
    Image4[Close].show();
    Image4[Back].show();
}

void New_Rech::ListPatient()
{
    const int row = List1.Add(ResultSet["num"].Key());
    Grid2.SetText(row, Number, Str(row + 1));
    Grid2.SetText(row, Name, AfterBlank(ResultSet["nom"]));
    Grid2.SetText(row, GivenName, AfterBlank(ResultSet["Prenom"]));
    Grid2.SetText(row, Birth, TextOrNothing(ResultSet["Naiss"]));
    Grid2.SetText(row, Sex, SexLetter(ResultSet["Sexe"]));
    Grid2.SetText(row, Telephone, AfterBlank(ResultSet["tel"]));
    Grid2.SetText(row, Town, AfterBlank(ResultSet["ville"]));
    Grid2.SetText(row, Card, AfterBlank(ResultSet["N_carte"]));
    Grid2.SetText(row, Archived, IsArchivedStatus(ResultSet["Flag_H"]) ? "OUI" : "");
}

void New_Rech::Cancel()
{
    DialogResult = ResultCancelled;
    Unload();
}

void New_Rech::Refuse(const QString& reason, int field)
{
    MsgBox(reason, Icon::Critical, "ATTENTION");
    Text2[field].setFocus();
}

void New_Rech::ShowCriteria()
{
    Image4[Close].hide();
    Image4[Back].hide();
    FloatOver(criteria, Grid2);
    if (List1.IsEmpty())
        Grid2.clearSelection(); // Qt passes the focus through the grid when a page is turned
    Text2[SSTab1.currentIndex() == NumberPage ? CardNumber : LastName].setFocus();
}

void New_Rech::ShowResults()
{
    criteria.hide();
    Grid2.setFocus();
}

} // namespace acts
