#pragma once

#include <QString>

namespace core {

/// Sets the short date to dd/MM/yyyy and the decimal mark to the point, on which all text conversions rely. They are
/// not put back. A refusal of the short date is told with the message "Failed", and the start goes on.
void SetRegionalFormats();

/// Sets the decimal mark; with `RestoreAfter` other than 0 it goes back to the mark found by the first call of the run.
/// Returns True (-1), or 0 when the host refused.
int SetDecimalMark(const QString& mark, int RestoreAfter);

/// Switches the display to this size in pixels. Its result isn't looked at.
void ChangeResolution(int width, int height);

} // namespace core
