#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace core {

/// "Imprimante par défaut": lists the printers of the system, changes nothing. Complete, but no menu entry opens
/// it.
class PPRT : public forms::Form {
    Q_OBJECT
public:
    PPRT();

    forms::Panel SSPanel1{"SSPanel1", "Imprimante par défaut"};
    forms::ComboBox Combo1{"Combo1"}; ///< device names; the first is chosen
    enum Way { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image1{"Image1"};

    void Image1_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
};

} // namespace core
