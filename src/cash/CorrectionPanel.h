#pragma once

#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

namespace cash {

/// The panel "Correction": payment code and amount of one pending act. Shared by the screens that settle acts.
///
/// It stands over its screen, hidden until Show. Accepting and cancelling are the screen's, since what follows differs.
class CorrectionPanel : public forms::Panel {
    Q_OBJECT
public:
    /// `amountName` is the name that the amount field has on the screen.
    CorrectionPanel(const QString& name, const QString& amountName);

    forms::Label LastName{"Label1(30)"};
    forms::Label FirstName{"Label1(31)"};
    forms::Label Service{"Label1(32)"};
    forms::ComboBox Code{"Combo1"};
    forms::AmountField Amount;
    forms::ControlArray<forms::Picture, 2> Image3{"Image3"}; ///< 0 accepts, 1 cancels

    /// Makes the act with this key current in `acts` and shows it: patient and service as `row` of the list has them in
    /// columns 1 to 3, its code, and its amount in dinars (nothing for 0 or Null). Raises 94 when the code is Null, 380
    /// when it is none of the six.
    void LoadAct(const forms::Grid& list, int row, dao::Recordset& acts, dao::Key act);

    /// Writes the chosen code and the typed amount (0 for none) to the current act, at once and under its lock.
    void SaveAct(dao::Recordset& acts);

    /// Shows the panel in the middle of `area`, in front, with the code ready to be chosen.
    void ShowOver(QWidget& area);
};

} // namespace cash
