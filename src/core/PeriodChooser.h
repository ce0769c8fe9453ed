#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"

#include <optional>

namespace core {

/// The choice of dates, "Journée" or "Période": one day on the first page, two bounds on the second. It is in front
/// of its screen's list while dates are being chosen. Enter in the last field of a page accepts, as its picture does;
/// what accepting and cancelling mean is the screen's.
class PeriodChooser : public forms::Panel {
    Q_OBJECT
public:
    /// Dates as dd/mm/yyyy.
    struct Period {
        QString first;
        QString last;
        /// Days with both ends; 0 or less when the end lies before the start.
        int Days() const;
    };

    PeriodChooser();

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
    /// Shows the chooser in the middle of `area`, in front, its first field ready to be typed over.
    void ShowOver(QWidget& area);

    /// The typed day or period, after the field that was being typed in has been checked as on leaving it. Nothing when
    /// a date is missing or bad: a message has been shown then ("Date incorrecte", "Saisie incomplète").
    std::optional<QString> ReadDay();
    std::optional<Period> ReadPeriod();

    /// Whether the bounds are in order; shows "Dates inversées" otherwise. An end one day before the start
    /// passes, on purpose: it is the empty period.
    bool IsInOrder(const Period& period);

private:
    void BuildForm();
    void Refuse(const QString& reason, int field);
};

} // namespace core
