#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"

#include <optional>

namespace core {

/// Lets the user choose a day (first page, "Journée") or a period (second page, "Période"). Floats over its screen's
/// list meanwhile. Enter in the last field of a page clicks its accept picture; the screen handles accepting and
/// cancelling.
class PeriodChooser : public forms::Panel {
    Q_OBJECT
public:
    /// The chosen days, first and last as dd/mm/yyyy. A single day is both.
    struct Period {
        QString first;
        QString last;
        bool isDay = false;
        /// Number of days, both ends included; 0 or less when the end is before the start.
        int Days() const;
        /// The bounds as mm/dd/yyyy, for statements.
        QString FirstUS() const;
        QString LastUS() const;
        /// "Journée du Mar  17/06/2008" or "Période du  Dim  15/06/2008 au Mar  17/06/2008".
        QString Heading() const;
    };

    PeriodChooser();

    enum Page { DayPage, PeriodPage };
    forms::TabStrip SSTab2{"SSTab2"};
    forms::Label DayLabel{"Label4(0)", " Du"};
    forms::Label FirstLabel{"Label4(3)", " Du"};
    forms::Label LastLabel{"Label3(5)", " Au"};
    enum Field { Day, First, Last };
    forms::ControlArray<forms::DateField, 3> Text1{"Text1"};
    enum Choice { AcceptDay = 2, CancelDay, AcceptPeriod, CancelPeriod };
    forms::ControlArray<forms::Picture, 4, 2> Image2{"Image2"};

    /// Puts the current date into all fields.
    void SetToday();
    /// Shows the chooser centred over `area`, with the focus in its first field.
    void ShowOver(QWidget& area);

    /// Whether the picture accepts a choice; the others cancel.
    static bool IsAccept(int picture) { return picture == AcceptDay || picture == AcceptPeriod; }
    /// The typed day or period, after the edited field has been validated as if the user had left it. Shows a message
    /// and returns nothing when a date is missing or invalid.
    std::optional<Period> Read(int acceptPicture);

    /// Whether the bounds are in order; shows "Dates inversées" otherwise. An end one day before the start is accepted
    /// on purpose, as the empty period.
    bool IsInOrder(const Period& period);

private:
    void BuildForm();
    std::optional<Period> ReadDay();
    std::optional<Period> ReadPeriod();
    void Refuse(const QString& reason, int field);
};

} // namespace core
