#pragma once

class QWidget;

namespace forms {

/// Moves the contents of a window, with the panels over them, into a scroll area that keeps the focused control in
/// view.
void MakeScrollable(QWidget& window);

} // namespace forms
