#pragma once

#include <QSize>

namespace forms {

/// The size of the display in pixels.
QSize DisplaySize();

/// The area in pixels that the main window works in, instead of a display mode; the whole display until
/// ChangeWorkingArea is called.
QSize WorkingArea();
/// Sets the working area, never more than the display. Never fails visibly.
void ChangeWorkingArea(const QSize& pixels);

} // namespace forms
