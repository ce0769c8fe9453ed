#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"

#include <optional>

namespace expenses {

/// An expense as typed: the date as dd/mm/yyyy, the amount in dinars as text.
struct TypedExpense {
    QString date;
    QString object;
    QString amount;
};

/// The panel in which an expense is entered or changed. It is in front of its screen and hidden otherwise; Enter moves
/// through its fields and accepts in the last one, as its picture does; what accepting and cancelling do is the
/// screen's.
class EntryPanel : public forms::Panel {
    Q_OBJECT
public:
    EntryPanel();

    forms::Panel SSPanel2{"SSPanel2", "MODIFICATION"}; ///< caption: what is being done
    forms::DateField Date{"Text2(0)"};
    forms::TextBox Object{"Text2(1)"};
    forms::AmountField Amount{"Text2(2)"};
    enum Choice { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image2{"Image2"};

    /// Shows the panel in the middle of `area`, in front, its first field ready to be typed over.
    void ShowOver(QWidget& area, const QString& title, const TypedExpense& shown);

    /// The typed expense, trimmed, after the date has been checked as on leaving its field. When a field is blank,
    /// shows a message and returns nothing.
    std::optional<TypedExpense> Read();

    /// Shows why the entry can't be saved and gives the field the focus.
    void Refuse(const QString& reason, forms::TextBox& field);

private:
    void BuildPanel();
};

} // namespace expenses
