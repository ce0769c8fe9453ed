#pragma once

#include "cash/ActLists.h"
#include "cash/CorrectionPanel.h"
#include "core/KeyedList.h"
#include "core/PeriodChooser.h"
#include "data/PaymentCode.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/Report.h"

namespace cash {

/// "Règlements en instance": the unpaid and partly paid acts of a day or period, settled one at a time. Three modes:
/// choosing dates, browsing, correcting. Acts are selected by their `date`; the list shows the date of the service. A
/// settled act stays listed with its new code until the next selection.
class F_Inst : public forms::Form {
    Q_OBJECT
public:
    F_Inst();

    forms::Panel SSPanel1{"SSPanel1"}; ///< caption: what is listed
    core::PeriodChooser Dates;         ///< SSTab2: the day or period to list
    enum ListColumn { Date = ActColumn::Service + 1, Time, Code, Amount };
    forms::Grid Grid3;
    forms::FigureLabel RCP{"RCP"}; ///< money already received on the acts listed
    CorrectionPanel SSPanel2{"SSPanel2", "Text2"};
    enum Action { OtherDate, Correct, Print, Quit };
    forms::ControlArray<forms::Picture, 4> Image1{"Image1"};
    forms::Bulle Bulle;

    /// Lists the pending acts of the chosen days; no message when there are none.
    void FillPendingList();
    /// Loads the current act into the correction panel; false when it no longer exists.
    bool LoadCorrection();
    /// Saves code and amount of the act being corrected and updates its row. The total becomes plain text. False when
    /// the act no longer exists.
    bool SaveCorrection();
    /// Prints the list as shown, even if empty.
    void PrintPendingList();

    void Grid3_Click();
    void Grid3_DblClick();
    void Image1_Click(int index);
    void Image2_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void ChooseDates();
    void ListChosenDates(int acceptPicture);
    void OpenCorrection();
    /// Returns to browsing: hides chooser and correction panel, shows the pictures.
    void Browse();
    void ShowPictures(bool shown);
    void ListAct(NamesOfActs& names);
    void ShowPlainTotal();

    QString FromDateUS; ///< chosen bounds as mm/dd/yyyy
    QString ToDateUS;
    int CorrectedRow = 0;     ///< row of the act being corrected
    double RunningAmount = 0; ///< dinars

    dao::Recordset PatientLookup, ServiceLookup;
    dao::Recordset PendingActs;

    core::KeyedList List3{Grid3}; ///< the acts listed
    const QStringList List_R = data::PaymentCodes();
    report::Report Report1;
};

} // namespace cash
