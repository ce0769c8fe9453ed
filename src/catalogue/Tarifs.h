#pragma once

#include "core/tariffs.h"
#include "platform/basic/Int16.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace catalogue {

/// "Tarifs des actes": the reference rates of the act codes. Changes are kept in memory; "Quitter" stores all of them,
/// closing the window discards them.
class Tarifs : public forms::Form {
    Q_OBJECT
public:
    Tarifs();

    enum Action { Modify, StoreAndQuit, CancelEntry, AcceptEntry };
    forms::ControlArray<forms::Picture, 4> Image2{"Image2"};
    enum RateColumn { Number, Code, Rate };
    forms::Grid Grid1;
    forms::Panel SSPanel3{"SSPanel3"};
    forms::Panel SSPanel2{"SSPanel2", "Modification"}; ///< its heading
    forms::Label Label3{"Label3"};                     ///< the code
    forms::TextBox RateField{"Text1(2)"};

    void ShowRates();

    void Grid1_Click();
    void Grid1_DblClick();
    void Image2_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void OpenEntry();
    /// Accepts the typed rate; an empty field is 0. Raises 6 outside 16 bits.
    void AcceptRate();
    void CloseEntry();
    /// Writes all rates to the table's row, adding it again if it was deleted.
    void StoreRates();

    core::TariffRates Rates; ///< the working copy
    basic::Int16 EditRow;    ///< row of the code in the entry panel
};

} // namespace catalogue
