#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace report {

/// The window "LongReading": offers to cancel a report whose rows take long to read.
class GiveUpWindow : public forms::Form {
    Q_OBJECT
public:
    GiveUpWindow();

    bool IsGivenUp() const { return isGivenUp; }

    forms::Label Explanation{"Explanation", "La lecture des données de l'état dure longtemps."};
    forms::Button GiveUp{"GiveUp", "Abandonner"};

protected:
    bool Form_QueryUnload() override;
    void EscapePressed() override;

private:
    bool isGivenUp = false;
};

} // namespace report
