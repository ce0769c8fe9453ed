#pragma once

#include "platform/basic/Int16.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace acts {

/// The actualisation: asks for a period and rewrites which of its acts are visible, by the option chosen on the day
/// sheet.
///
/// In: the option's index in DialogResult, its caption in PickedDate. Out: 1 (done) or 8 (cancelled) in DialogResult;
/// in PickedDate the end date or, on cancel, the date of the last actualisation. Shows one of three panels at a time:
/// the period, the dates of the first and last act, the estimated duration.
class New_Mecano : public forms::Form {
    Q_OBJECT
public:
    New_Mecano();

    forms::Panel SSPanel1{"SSPanel1"};       ///< the period
    forms::Label VisibleShare{"Label4(20)"}; ///< caption of the chosen option
    enum Bound { FirstDay = 1, LastDay };
    forms::ControlArray<forms::DateField, 2, 1> Text1{"Text1"};
    forms::ControlArray<forms::Picture, 2, 1> Image2{"Image2"}; ///< the calendars beside them
    forms::Button SSCommand1{"SSCommand1", "Rappel  des  dates"};
    forms::Button SSCommand2{"SSCommand2", "Durée approximative"};
    enum Action { Run, Cancel, CloseReminder, CloseEstimate };
    forms::ControlArray<forms::Picture, 4> Image1{"Image1"};

    forms::Panel SSPanel2{"SSPanel2", "Ensemble  des  actes  effectués"}; ///< the reminder
    forms::Label FirstActDate{"Label4(16)"};
    forms::Label LastActDate{"Label4(17)"};

    forms::Panel SSPanel3{"SSPanel3", "Durée  approximative  du  traitement"}; ///< the estimate
    forms::Label EstimatedDays{"Label4(26)"};
    forms::Label EstimatedDuration{"Label4(27)"};

    /// Processes the period and shows a message at the end. Except for "5 sur 5", an error ends the program at once
    /// without a message; days already processed stay so.
    void RunActualisation();
    /// Shows the estimate, 22 seconds per day. Raises 6 past 1489 days.
    void ShowDuration();

    void Image1_Click(int index);
    void Image2_Click(int index);
    void SSCommand1_Click();
    void SSCommand2_Click();

protected:
    void Form_Load() override;
    bool Form_QueryUnload() override;
    void EscapePressed() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildForm();
    void BuildPanels();
    void ShowPanel(forms::Panel& panel, QWidget& focus);
    void ShowMainPanel(QWidget& focus);
    void Confirm();
    void RestoreLastDate();
    /// Whether both fields contain valid dates; otherwise shows a message and focuses the invalid one.
    bool ValidateDates();
    bool MoveBetweenDates(int key, const QObject* field);

    basic::Int16 SkipCount; ///< index of the chosen option: acts skipped between two kept ones
    bool answered = false;  ///< a button was clicked; the close box counts as cancel
};

} // namespace acts
