#pragma once

class QWidget;

namespace forms {
class Form;
}

namespace core {

/// Puts the window in the middle of the screen that the program is on: half the screen less half the window each way,
/// in twips and in floating point. As it shows, it is moved into the screen's free area where it would reach past it.
void CenterForm(forms::Form& window);

/// Shows a panel of the same window in the middle of `area`, in front, in its natural size or what the area has room
/// for; it follows when the area changes. Which control takes the keyboard is left to the caller.
void FloatOver(QWidget& panel, QWidget& area);

} // namespace core
