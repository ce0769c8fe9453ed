#pragma once

#include "core/KeyedList.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"

namespace acts {

/// Whether the status of an act or a patient is archived (1). Any other value, and Null, is "récent".
bool IsArchivedStatus(const dao::Field& status);

/// The columns "Réc." and "Arch." of a list whose records are archived and restored by hand, and their counts. A toggle
/// changes only the screen until it is saved.
class ArchiveColumns {
public:
    ArchiveColumns(core::KeyedList& list, int recentColumn, int archivedColumn);

    /// Drops counts and unsaved toggles.
    void Clear();
    /// Shows and counts the status of a row just added. Raises 6 when a count exceeds 16 bits.
    void Show(int row, const dao::Field& status);
    bool IsRecent(int row) const;
    void Toggle(int row);
    bool TogglesPending() const { return togglesPending; }
    /// If a row was toggled, writes the status of every row to field `Flag_H`, all or none. Deleted records are
    /// skipped.
    void Save(dao::Recordset& records);

    /// Shows the records that are recent, archived, and listed; nothing for 0.
    void ShowCounts(forms::ControlArray<forms::FigureLabel, 3, 1>& labels, QString (*text)(double)) const;

private:
    core::KeyedList& list;
    int recentColumn;
    int archivedColumn;
    basic::Int16 recent;
    basic::Int16 archived;
    bool togglesPending = false;
};

} // namespace acts
