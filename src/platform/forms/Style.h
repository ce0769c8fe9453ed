#pragma once

class QApplication;

namespace forms {

/// Sets style, font, style sheet in the desktop's colours, window icon, and the French texts of Qt. Call once, before
/// the first window; follows the desktop when its colours change.
void ApplyStyle(QApplication& application);

/// The ratio of the program's font size to 10 points, by which text widths grow.
double FontScale();

} // namespace forms
