#pragma once

#include <QSize>

namespace forms {

/// The size of the display in pixels.
QSize DisplaySize();

/// The largest size of the main window in pixels, limited instead of changing the mode of the display. The whole
/// display until ChangeWorkingArea is called.
QSize WorkingArea();
/// Sets the working area, limited to the display.
void ChangeWorkingArea(const QSize& pixels);

} // namespace forms
