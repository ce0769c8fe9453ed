#pragma once

class QApplication;

namespace forms {

/// Gives the program its looks: style, colours, font, style sheet, window icon. Called once, before the first window.
void ApplyStyle(QApplication& application);

} // namespace forms
