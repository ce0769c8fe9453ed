#pragma once

#include <QSize>

namespace forms {

/// The size of the display in pixels.
QSize DisplaySize();

/// The area in pixels available to the main window, in place of a display mode; the whole display until
/// ChangeWorkingArea is called.
QSize WorkingArea();
/// Sets the working area, limited to the display.
void ChangeWorkingArea(const QSize& pixels);

} // namespace forms
