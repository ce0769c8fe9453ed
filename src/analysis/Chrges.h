#pragma once

#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace analysis {

/// "Charges courantes mensuelles": the fixed monthly costs and their daily share, which is subtracted from the result
/// of a period. A month always counts as 30 days. Stored in the practice's row of permanent data.
class Chrges : public forms::Form {
    Q_OBJECT
public:
    Chrges();

    forms::Panel SSPanel1{"SSPanel1", "Charges courantes mensuelles"};
    enum Charge { Salaries = 1, Rent, Depreciation, Utilities, Telephone, Taxes, Others, MonthlyTotal, DailyTotal };
    /// Each field's Tag holds its text as loaded. The totals are read-only.
    forms::ControlArray<forms::AmountField, DailyTotal, Salaries> Text1{"Text1"};
    enum Action { Store, Leave };
    forms::ControlArray<forms::Picture, 2> Image1{"Image1"};

    /// Shows the stored charges. Creates the row of permanent data, with its rates, if the practice has none.
    void LoadCharges();
    /// Shows the sum of the seven charges if it is above 0.
    void RecomputeMonthly();
    /// Tells the user that the charges are being saved, then writes all nine figures as shown, in one update.
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
    int FocusedEntry();
};

} // namespace analysis
