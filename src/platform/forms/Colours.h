#pragma once

#include <QColor>

class QPalette;

namespace forms {

/// The colours of the program by their roles, derived from the desktop's palette so that light, dark and high-contrast
/// desktops are respected. Every text colour has a contrast of at least 4.5 to 1 on each ground it is shown on.
struct Colours {
    QColor window;       ///< ground of a screen
    QColor raised;       ///< ground of panels and tab pages
    QColor field;        ///< ground of entry fields, figures and tables
    QColor alternate;    ///< ground of every second row
    QColor header;       ///< ground of headings
    QColor hover;        ///< ground of a control under the pointer
    QColor selection;    ///< ground of the chosen row
    QColor weekend;      ///< ground of a day off in a calendar table
    QColor today;        ///< ground of the current day in one
    QColor border;       ///< of panels and tables
    QColor fieldBorder;  ///< of what can be typed into or pressed
    QColor text;         ///< on window, raised, field, alternate, header, hover, selection, weekend, today
    QColor quiet;        ///< text of secondary weight, on window, raised and header
    QColor disabled;     ///< text of what can't be used now, on window, raised and field
    QColor accent;       ///< captions, icons and frames of what acts, on window, raised, field and hover
    QColor accentGround; ///< ground of the default button and of pressed pictures
    QColor onAccent;     ///< text on accentGround
    QColor alarm;        ///< a loss, the chosen day of the calendar, on window, raised, field and selection
    QColor warning;      ///< icons of warnings
    QColor tip;          ///< ground of tooltips
    QColor onTip;        ///< text on it
    QColor backdrop;     ///< the drawing behind the main window's contents
};

Colours ColoursFrom(const QPalette& desktop);

/// The contrast of two opaque colours, 1 to 21.
double Contrast(const QColor& one, const QColor& other);

/// The colours in force: those of the application's present palette.
const Colours& TheColours();
/// To be called when the application's palette has changed.
void RefreshColours();
/// Counts the refreshes: what was drawn with another number is outdated.
int ColourGeneration();

} // namespace forms
