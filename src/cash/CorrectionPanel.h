#pragma once

#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

#include <functional>

namespace cash {

/// The panel "Correction" and its mode: payment code and amount of one pending act are shown, changed, and written or
/// dropped. Shared by the screens that settle acts; it is in front of its screen and hidden otherwise.
///
/// An act that another program has deleted gives a message; nothing is shown or written then.
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
    enum Choice { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image3{"Image3"};

    /// What the screen does when the correction is accepted: calls SaveAct and shows the result. Returns what SaveAct
    /// has returned.
    std::function<bool()> Save;
    /// What the screen does when the panel has closed, saved or not.
    std::function<void()> Left;

    /// Shows the act with this key of `acts`: patient and service as `row` of the list has them, its code, and its
    /// amount in dinars (nothing for 0 or Null). False when the act is gone. Raises InvalidNull when the code is Null,
    /// InvalidProperty when it is none of the six.
    bool LoadAct(const forms::Grid& list, int row, const dao::Recordset& acts, dao::Key act);

    /// Writes the chosen code and the typed amount (0 for none) to the act, at once and under its lock. False when the
    /// act is gone.
    bool SaveAct();

    /// Shows the panel in the middle of `area`, in front, with the code ready to be chosen.
    void ShowOver(QWidget& area);

    void Image3_Click(int index);

private:
    void BuildPanel();
    bool FindAct();

    dao::Recordset actsInHand;
    dao::Key actInHand = 0;
};

} // namespace cash
