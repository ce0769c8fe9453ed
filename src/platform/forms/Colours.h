#pragma once

#include <QColor>

class QPalette;

namespace forms {

/// The colours of the program by their roles, derived from the desktop's palette so that light, dark and high-contrast
/// desktops are respected. Every text colour has a contrast of at least 4.5 to 1 on each background it is used on.
struct Colours {
    QColor window;       ///< background of a screen
    QColor raised;       ///< background of panels and tab pages
    QColor field;        ///< background of entry fields, figures and tables
    QColor alternate;    ///< background of every second row
    QColor header;       ///< background of headings
    QColor hover;        ///< background of a control under the pointer
    QColor selection;    ///< background of the chosen row
    QColor weekend;      ///< background of a day off in a calendar table
    QColor today;        ///< background of the current day in one
    QColor border;       ///< of panels and tables
    QColor fieldBorder;  ///< of fields and buttons
    QColor text;         ///< on window, raised, field, alternate, header, hover, selection, weekend, today
    QColor quiet;        ///< hints and texts of secondary weight, on window, raised, field and header
    QColor disabled;     ///< text of disabled controls, on window, raised and field
    QColor accent;       ///< captions, icons and frames of active controls, on window, raised, field and hover
    QColor accentGround; ///< background of the default button and of pressed pictures
    QColor onAccent;     ///< text on accentGround
    QColor alarm;        ///< a loss, the chosen day of the calendar, on window, raised, field and selection
    QColor warning;      ///< icons of warnings
    QColor tip;          ///< background of tooltips
    QColor onTip;        ///< text on it
    QColor backdrop;     ///< the drawing behind the main window's contents
};

Colours ColoursFrom(const QPalette& desktop);

/// The contrast of two opaque colours, 1 to 21.
double Contrast(const QColor& one, const QColor& other);

/// The current colours, derived from the application's palette.
const Colours& TheColours();
/// Call when the application's palette has changed.
void RefreshColours();
/// Number of refreshes: drawings made under another number are outdated.
int ColourGeneration();

} // namespace forms
