#pragma once

class QApplication;

namespace forms {

/// Gives the program its looks: style, font, style sheet in the desktop's colours, window icon, and Qt's own texts in
/// French. Called once, before the first window; follows the desktop when its colours change.
void ApplyStyle(QApplication& application);

/// The size of the program's font to the usual one of 10 points: widths that hold text grow with it.
double FontScale();

} // namespace forms
