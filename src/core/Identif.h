#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace core {

/// "Identification": the eight administrative identifiers of the practice, the first eight fields of `Permn`. A
/// practice without that row gets it at loading. Accepting saves when a text has changed, also by blanks alone; leaving
/// never saves.
class Identif : public forms::Form {
    Q_OBJECT
public:
    static constexpr int Identifiers = 8;

    Identif();

    forms::Panel SSPanel1{"SSPanel1", "Identification"};
    forms::ControlArray<forms::TextBox, Identifiers> Text1{"Text1"}; ///< the tag of each is its text at loading
    enum Way { Accept, Leave };
    forms::ControlArray<forms::Picture, 2> Image1{"Image1"};

    void LoadIdentification();
    void SaveIdentification();
    void Image1_Click(int index);

protected:
    void Form_Load() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildForm();
    /// Up and Down go from field to field and stop at the ends.
    bool MoveFrom(int field, int key);
};

} // namespace core
