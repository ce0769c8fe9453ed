#pragma once

class QWidget;

namespace forms {
class Form;
}

namespace core {

/// Centres the window on the program's screen: half the screen minus half the window in each direction, computed in
/// twips without rounding. When shown, it is moved into the screen's free area if necessary.
void CenterForm(forms::Form& window);

/// Shows a panel of the same window centred over `area`, in its natural size but no larger than the area, and keeps it
/// there when the area changes. The caller sets the focus.
void FloatOver(QWidget& panel, QWidget& area);

} // namespace core
