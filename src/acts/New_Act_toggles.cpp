#include "acts/New_Act.h"

#include "core/globals.h"
#include "core/lists.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace acts {

namespace {

constexpr auto Yes = "OUI";

QString CountOrNothing(int count)
{
    return count < 1 ? QString() : Str(count);
}

bool ConfirmsArchiving()
{
    return MsgBox("Confirmer archivage acte ('R-')", Icon::Question, "Attention", Buttons::YesNo) == Answer::Yes;
}

} // namespace

void New_Act::ToggleActArchive()
{
    if (List1.isEmpty())
        return;
    const int row = Grid2.Row();
    const bool recent = !Grid2.Text(row, IsRecent).trimmed().isEmpty();
    if (recent && Grid2.Text(row, PayCode).trimmed() == "R-" && !ConfirmsArchiving())
        return;

    Grid2.SetText(row, IsRecent, recent ? "" : Yes);
    Grid2.SetText(row, IsArchived, recent ? Yes : "");
    RecentCount += recent ? -1 : 1;
    ArchivedCount += recent ? 1 : -1;
    ShowActTotals();
    TogglesPending = true;
}

void New_Act::ShowActTotals()
{
    ListedCount = Sum(RecentCount, ArchivedCount);
    LT[RecentSum].setText(CountOrNothing(RecentCount));
    LT[ArchivedSum].setText(CountOrNothing(ArchivedCount));
    LT[WholeSum].setText(CountOrNothing(ListedCount));
}

void New_Act::SaveActToggles()
{
    if (!TogglesPending)
        return;
    ActesRS.LockEdits(true);
    dao::Transaction wholeDay(TheDatabase);
    for (int row = 0; row < List1.size(); ++row) {
        if (!FindKey(ActesRS, List1[row]))
            continue;
        ActesRS.Edit();
        ActesRS["Flag_H"] = Grid2.Text(row, IsArchived).trimmed() == Yes ? 1 : 0;
        ActesRS.Update();
    }
    wholeDay.Commit();
    dao::DBEngine.Idle(dao::RefreshCache);
    TogglesPending = false;
}

void New_Act::SaveCardDisplay()
{
    const QString wanted = SSOption2[LimitedDisplay].isChecked() ? Yes : "";
    if (wanted == CardDisplay)
        return;
    PermnTable.MoveFirst();
    PermnTable.Edit();
    PermnTable["RC"] = wanted;
    PermnTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

} // namespace acts
