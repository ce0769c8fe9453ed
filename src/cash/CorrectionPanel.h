#pragma once

#include "core/KeyedList.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

#include <functional>

namespace cash {

/// The panel "Correction", in which payment code and amount of one pending act are edited. Shared by the screens that
/// settle acts; floats over its screen while in use.
///
/// If another program has deleted the act, a message is shown and nothing is written.
class CorrectionPanel : public forms::Panel {
    Q_OBJECT
public:
    /// `amountName` is the object name of the amount field.
    CorrectionPanel(const QString& name, const QString& amountName);

    forms::Label LastName{"Label1(30)"};
    forms::Label FirstName{"Label1(31)"};
    forms::Label Service{"Label1(32)"};
    forms::ComboBox Code{"Combo1"};
    forms::AmountField Amount;
    enum Choice { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image3{"Image3"};

    /// Called when the correction is accepted: calls SaveAct, shows the result and returns the value of SaveAct.
    std::function<bool()> Save;
    /// Called when the panel has closed, saved or not.
    std::function<void()> Left;

    /// Loads the act on a row of the list: patient and service as shown there; from `acts` its code and its amount in
    /// dinars (nothing for 0 or Null). False when the act no longer exists. Raises 9 for a row without an act, 94 when
    /// its code is Null, 380 when the code isn't one of the six.
    bool LoadAct(const core::KeyedList& list, int row, const dao::Recordset& acts);

    /// Writes the chosen code and the typed amount (0 for none) to the act, under its lock. False when the act no
    /// longer exists.
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
