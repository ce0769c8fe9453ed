#include "acts/New_Act.h"

#include "core/globals.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace acts {

namespace {

bool ConfirmsArchiving()
{
    return MsgBox("Confirmer archivage acte ('R-')", Icon::Question, "Attention", Buttons::YesNo) == Answer::Yes;
}

} // namespace

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
