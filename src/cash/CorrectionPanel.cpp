#include "cash/CorrectionPanel.h"

#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/dao/Engine.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace cash {

CorrectionPanel::CorrectionPanel(const QString& name, const QString& amountName)
    : Panel(name, "Correction"), Amount(amountName)
{
    setAutoFillBackground(true);
    setProperty("floating", true);
    Code.setAccessibleName("Règlement");
    Amount.setAccessibleName("Montant");
    Amount.setAlignment(Qt::AlignRight);
    Amount.setPlaceholderText("0");
    Image3[0].SetIcon("accept");
    Image3[0].SetAction("Enregistrer la correction");
    Image3[1].SetIcon("cancel");
    Image3[1].SetAction("Annuler");

    Inside(*this, Column{
                      Pairs{
                          {&NewLabel("LNom", "Nom"), &LastName},
                          {&NewLabel("LPrenom", "Prénom"), &FirstName},
                          {&NewLabel("LUnite", "Unité"), &Service},
                          {&NewLabel("LRegl", "Règl."), &Code},
                          {&NewLabel("LMontant", "Montant"), &Amount},
                      },
                      Row{Item::Stretch(), Image3[0], Image3[1]},
                  });
    setMinimumWidth(320);
    hide();

    connect(&Amount, &TextBox::Entered, this, [this] { Image3[0].setFocus(); });
}

void CorrectionPanel::LoadAct(const Grid& list, int row, dao::Recordset& acts, dao::Key act)
{
    LastName.setText(list.Text(row, 1));
    FirstName.setText(list.Text(row, 2));
    Service.setText(list.Text(row, 3));
    acts.MoveFirst();
    acts.FindFirst("num = " + QString::number(act));
    Code.SetListIndex(acts["flag_R"].Long());
    const dao::Field amount = acts["montant"];
    const bool paid = !amount.IsNull() && amount.Double() != 0;
    Amount.setText(paid ? basic::PlainText(amount.Double()) : QString());
}

void CorrectionPanel::SaveAct(dao::Recordset& acts)
{
    acts.LockEdits(true);
    acts.Edit();
    acts["flag_R"] = Code.currentIndex();
    acts["montant"] = basic::Val(Amount.text());
    acts.Update();
    dao::DBEngine.Idle(1);
}

void CorrectionPanel::ShowOver(QWidget& area)
{
    core::FloatOver(*this, area);
    Code.setFocus();
}

} // namespace cash
