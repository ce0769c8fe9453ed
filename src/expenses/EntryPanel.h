#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"

#include <optional>

namespace expenses {

/// An expense as typed: date as dd/mm/yyyy, amount in dinars.
struct TypedExpense {
    QString date;
    QString object;
    QString amount;
};

/// The panel in which an expense is entered or changed; floats over its screen. Enter moves through its fields and, in
/// the last one, clicks the accept picture. The screen handles accepting and cancelling.
class EntryPanel : public forms::Panel {
    Q_OBJECT
public:
    EntryPanel();

    forms::Panel SSPanel2{"SSPanel2", "MODIFICATION"}; ///< caption: the action
    forms::DateField Date{"Text2(0)"};
    forms::TextBox Object{"Text2(1)"};
    forms::AmountField Amount{"Text2(2)"};
    enum Choice { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image2{"Image2"};

    /// Shows the panel centred over `area`, with the focus in its first field.
    void ShowOver(QWidget& area, const QString& title, const TypedExpense& shown);

    /// The typed expense, trimmed, after the date has been validated as on leaving its field. Shows a message and
    /// returns nothing when a field is blank or the date is no day.
    std::optional<TypedExpense> Read();

    /// Shows why the entry can't be saved and focuses the field.
    void Refuse(const QString& reason, forms::TextBox& field);

private:
    void BuildPanel();
};

} // namespace expenses
