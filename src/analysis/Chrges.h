#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace analysis {

/// "Charges courantes mensuelles": the fixed costs of a month and what they make for a day, which the net result of a
/// period is charged with. A month counts for 30 days, always. They are kept in the practice's row of permanent data.
class Chrges : public forms::Form {
    Q_OBJECT
public:
    Chrges();

    forms::Panel SSPanel1{"SSPanel1", "Charges courantes mensuelles"};
    enum Charge { Salaries = 1, Rent, Depreciation, Utilities, Telephone, Taxes, Others, MonthlyTotal, DailyTotal };
    /// The text of a field as it was loaded stands in its Tag. The totals aren't for entry.
    forms::ControlArray<forms::AmountField, DailyTotal, Salaries> Text1{"Text1"};
    enum Action { Store, Leave };
    forms::ControlArray<forms::Picture, 2> Image1{"Image1"};

    /// Shows the stored charges. Makes the row of permanent data, with its rates, when the practice has none.
    void LoadCharges();
    /// Shows the sum of the seven charges; nothing unless it is above 0.
    void RecomputeMonthly();
    /// Says that the charges are being saved, then writes all nine figures as the fields show them, at once.
    void SaveCharges();

    void Image1_Click(int index);

protected:
    void Form_Load() override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void BuildForm();
    bool IsChanged();
    void StoreCharges();
    /// The entry field that has the focus; 0 when none has.
    int EntryInHand();
};

} // namespace analysis
