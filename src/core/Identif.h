#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace core {

/// "Identification": the eight administrative identifiers of the practice, the first eight fields of `Permn`. Loading
/// creates the row if missing. Accepting saves if a text has changed, even by blanks only; leaving never saves.
/// Complete, but no menu entry opens it.
class Identif : public forms::Form {
    Q_OBJECT
public:
    static constexpr int Identifiers = 8;

    Identif();

    forms::Panel SSPanel1{"SSPanel1", "Identification"};
    forms::ControlArray<forms::TextBox, Identifiers> Text1{"Text1"}; ///< each Tag holds the text as loaded
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
    /// Up and Down move between fields and stop at the ends.
    bool MoveFrom(int field, int key);
};

} // namespace core
