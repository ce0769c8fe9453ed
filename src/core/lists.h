#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"

#include <QStringList>

namespace forms {
class ComboBox;
class Grid;
} // namespace forms

namespace core {

/// Fills the six payment codes (line n is the code of `flag_R` n; "P " keeps its blank) and the ten hour slots (line n
/// is the slot of `HH` n, " 8-9" to " 17-18"). `codes` receives the payment codes as well and starts on line 0; it may
/// be null.
void FillPayLists(QStringList& List_R, QStringList& List_HH, forms::ComboBox* codes = nullptr);

/// The ten hour slots of a day; line n is the slot of `HH` n, " 8-9" to " 17-18".
QStringList HourSlots();

/// What the rules say of the codes, a line each: pending or settled, and how an act is valued. The heading "R" of a
/// list of acts shows it; each line of the payment codes shows its own.
QString PayCodeTips();

/// A line of a list; raises 9 outside it, as a code that no list knows is an error of the data.
QString ListLine(const QStringList& list, int line);

/// The row that `nextRow` counts up to, added when the grid has no such row yet. Raises 6 past row 32,766.
int TakeRow(forms::Grid& grid, basic::Int16& nextRow);

/// Makes the row with this key current, by one look-up. False when there is none, and the current row stays where it
/// was; the set may be empty.
bool FindKey(dao::Recordset& lookup, dao::Key key);

/// Deletes the row with this key. Returns false when it is gone; no other row is touched then.
bool DeleteKey(dao::Recordset& rows, dao::Key key);

/// Asks whether a line of a list is to be deleted; `number` is the line's number as the screen writes it.
bool ConfirmsDeletion(const QString& number);

/// Says that the line in hand was deleted meanwhile by another program: nothing was written.
void TellLineIsGone();

/// The text of a field for a list: empty for Null.
QString TextOrNothing(const dao::Field& field);

} // namespace core
