#include "acts/ArchiveColumns.h"

#include "core/globals.h"
#include "core/lists.h"
#include "platform/forms/Grid.h"

namespace acts {

namespace {

constexpr auto Yes = "OUI";

} // namespace

bool IsArchivedStatus(const dao::Field& status)
{
    return !status.IsNull() && status.Long() == 1;
}

ArchiveColumns::ArchiveColumns(core::KeyedList& shownIn, int recentAt, int archivedAt)
    : list(shownIn), recentColumn(recentAt), archivedColumn(archivedAt)
{
}

void ArchiveColumns::Clear()
{
    recent = archived = 0;
    togglesPending = false;
}

void ArchiveColumns::Show(int row, const dao::Field& status)
{
    const bool isArchived = IsArchivedStatus(status);
    list.Grid().SetText(row, isArchived ? archivedColumn : recentColumn, Yes);
    ++(isArchived ? archived : recent);
}

bool ArchiveColumns::IsRecent(int row) const
{
    return !list.Grid().Text(row, recentColumn).trimmed().isEmpty();
}

void ArchiveColumns::Toggle(int row)
{
    const bool toArchive = IsRecent(row);
    list.Grid().SetText(row, recentColumn, toArchive ? "" : Yes);
    list.Grid().SetText(row, archivedColumn, toArchive ? Yes : "");
    recent += toArchive ? -1 : 1;
    archived += toArchive ? 1 : -1;
    togglesPending = true;
}

void ArchiveColumns::Save(dao::Recordset& records)
{
    if (!togglesPending)
        return;
    records.LockEdits(true);
    dao::Transaction wholeList(core::TheDatabase);
    for (int row = 0; row < list.Count(); ++row) {
        if (!core::FindKey(records, list.KeyOf(row)))
            continue;
        records.Edit();
        records["Flag_H"] = list.Grid().Text(row, archivedColumn).trimmed() == Yes ? 1 : 0;
        records.Update();
    }
    wholeList.Commit();
    dao::DBEngine.Idle(dao::RefreshCache);
    togglesPending = false;
}

void ArchiveColumns::ShowCounts(forms::ControlArray<forms::FigureLabel, 3, 1>& labels, QString (*text)(double)) const
{
    int label = 1;
    for (const int count : {int{recent}, int{archived}, int{basic::Sum(recent, archived)}})
        labels[label++].setText(count < 1 ? QString() : text(count));
}

} // namespace acts
