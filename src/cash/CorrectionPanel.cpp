#include "cash/CorrectionPanel.h"

#include "cash/ActLists.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace cash {

namespace {

void ReportDeletedAct()
{
    MsgBox("Cet acte n'existe plus : il a été supprimé entre-temps.", Icon::Critical, "ATTENTION");
}

} // namespace

CorrectionPanel::CorrectionPanel(const QString& name, const QString& amountName)
    : Panel(name, "Correction"), Amount(amountName)
{
    BuildPanel();
    OnEach(Image3, &Picture::clicked, *this, &CorrectionPanel::Image3_Click);
    On(Code, &ComboBox::Entered, *this, [this] { Amount.setFocus(); });
    On(Amount, &TextBox::Entered, *this, [this] { Image3[Accept].setFocus(); });
}

void CorrectionPanel::BuildPanel()
{
    setProperty("floating", true);
    Code.setAccessibleName("Règlement");
    Amount.setAccessibleName("Montant");
    Amount.setPlaceholderText("0");
    Dress(Image3[Accept], "accept", "Enregistrer la correction", Command::Accept);
    Dress(Image3[Cancel], "cancel", "Annuler");

    Inside(*this, Column{
                      Pairs{
                          {&NewLabel("LNom", "Nom"), &LastName},
                          {&NewLabel("LPrenom", "Prénom"), &FirstName},
                          {&NewLabel("LUnite", "Unité"), &Service},
                          {&NewLabel("LRegl", "Règl."), &Code},
                          {&NewLabel("LMontant", "Montant"), &Amount},
                      },
                      Row{Item::Stretch(), Image3[Accept], Image3[Cancel]},
                  });
    setMinimumWidth(320);
    hide();
}

bool CorrectionPanel::FindAct()
{
    if (core::FindKey(actsInHand, actInHand))
        return true;
    ReportDeletedAct();
    return false;
}

bool CorrectionPanel::LoadAct(const core::KeyedList& list, int row, const dao::Recordset& acts)
{
    actsInHand = acts;
    actInHand = list.KeyOf(row);
    if (!FindAct())
        return false;
    const Grid& grid = list.Grid();
    LastName.setText(grid.Text(row, ActColumn::LastName));
    FirstName.setText(grid.Text(row, ActColumn::FirstName));
    Service.setText(grid.Text(row, ActColumn::Service));
    Code.SetListIndex(actsInHand["flag_R"].Long());
    const dao::Field amount = actsInHand["montant"];
    const bool paid = !amount.IsNull() && amount.Double() != 0;
    Amount.setText(paid ? basic::PlainText(amount.Double()) : QString());
    return true;
}

bool CorrectionPanel::SaveAct()
{
    // Find the act by key: the current row may have changed since.
    if (!FindAct())
        return false;
    try {
        actsInHand.LockEdits(true);
        actsInHand.Edit();
        actsInHand["flag_R"] = Code.currentIndex();
        actsInHand["montant"] = basic::Val(Amount.text());
        actsInHand.Update();
    } catch (const basic::RuntimeError& error) {
        if (error.Code() != basic::Error::RecordDeleted)
            throw;
        ReportDeletedAct();
        return false;
    }
    dao::DBEngine.Idle(dao::RefreshCache);
    return true;
}

void CorrectionPanel::ShowOver(QWidget& area)
{
    core::FloatOver(*this, area);
    Code.setFocus();
}

void CorrectionPanel::Image3_Click(int index)
{
    if (index == Accept && Save())
        MsgBox("Correction enregistrée", Icon::Information, "ZEP Lumo");
    hide();
    Left();
}

} // namespace cash
