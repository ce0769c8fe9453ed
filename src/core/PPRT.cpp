#include "core/PPRT.h"

#include "core/windows.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

#include <QPrinterInfo>

using namespace forms;

namespace core {

PPRT::PPRT() : Form("PPRT")
{
    BuildForm();
    OnEach(Image1, &Picture::clicked, *this, &PPRT::Image1_Click);
}

void PPRT::BuildForm()
{
    constexpr int width = 320;
    setWindowTitle(" ");
    setAccessibleName("Imprimante par défaut");
    Combo1.setAccessibleName("Imprimante");
    Combo1.setMinimumWidth(width);
    Dress(Image1[Accept], "accept", "Valider", Command::Accept);
    Dress(Image1[Cancel], "cancel", "Annuler", Command::Leave);
    Inside(SSPanel1, Column{Combo1, Row{Item::Stretch(), Image1[Accept], Image1[Cancel]}});
    SetContent(Column{SSPanel1});
}

void PPRT::Form_Load()
{
    CenterForm(*this);
    Combo1.clear();
    Combo1.addItems(QPrinterInfo::availablePrinterNames());
    if (Combo1.count() > 0)
        Combo1.SetListIndex(0);
    else
        Combo1.setPlaceholderText("Aucune imprimante");
    Combo1.setFocus();
}

void PPRT::EscapePressed()
{
    Image1_Click(Cancel);
}

void PPRT::Image1_Click(int index)
{
    if (index == Accept)
        MsgBox("OK");
    Unload();
}

} // namespace core
