#pragma once

#include "platform/dao/Recordset.h"

#include <QStringList>

namespace forms {
class ComboBox;
class Grid;
} // namespace forms

namespace core {

/// Fills a drop-down list with the payment codes and their explanations, line 0 chosen.
void FillPayCodes(forms::ComboBox& codes);

/// The ten hour slots of a day; line n is the slot of `HH` n, " 8-9" to " 17-18".
QStringList HourSlots();

/// Explains the payment codes, one line each: pending or settled, and how an act is valued. Tooltip of the columns that
/// show the code.
QString PayCodeTips();

/// The text with this number; raises 9 outside the list, since an unknown code is an error in the data.
QString ListLine(const QStringList& list, int line);

/// Moves to the row with this key by one look-up. False, without moving, if there is none; the set may be empty.
bool FindKey(dao::Recordset& lookup, dao::Key key);

/// Deletes the row with this key; false if it no longer exists.
bool DeleteKey(dao::Recordset& rows, dao::Key key);

/// Asks whether to delete a row of a list, which is highlighted meanwhile; Enter means no. `number` is the row's number
/// as shown.
bool ConfirmsDeletion(forms::Grid& list, int row, const QString& number);

/// Tells the user that another program has deleted the line. Call when nothing was written.
void ReportDeletedLine();

/// The text of a field; empty for Null.
QString TextOrNothing(const dao::Field& field);

} // namespace core
