#pragma once

#include "platform/dao/Recordset.h"

#include <QStringList>

namespace forms {
class ComboBox;
} // namespace forms

namespace core {

/// Fills the payment codes and hour slots, see PayCodes and HourSlots. `codes`, which may be null, receives the payment
/// codes as well, with line 0 chosen.
void FillPayLists(QStringList& List_R, QStringList& List_HH, forms::ComboBox* codes = nullptr);

/// The ten hour slots of a day; line n is the slot of `HH` n, " 8-9" to " 17-18".
QStringList HourSlots();

/// Explains the payment codes, one line each: pending or settled, and how an act is valued. Tooltip of the "R"
/// headings; each line is also the tooltip of its code.
QString PayCodeTips();

/// A line of a list; raises 9 outside it: an unknown code is a data error.
QString ListLine(const QStringList& list, int line);

/// Moves to the row with this key by one look-up. False, without moving, if there is none; the set may be empty.
bool FindKey(dao::Recordset& lookup, dao::Key key);

/// Deletes the row with this key; false if it no longer exists.
bool DeleteKey(dao::Recordset& rows, dao::Key key);

/// Asks whether to delete a line of a list; `number` is the line number as shown.
bool ConfirmsDeletion(const QString& number);

/// Tells the user that another program has deleted the line and nothing was written.
void ReportDeletedLine();

/// The text of a field; empty for Null.
QString TextOrNothing(const dao::Field& field);

} // namespace core
