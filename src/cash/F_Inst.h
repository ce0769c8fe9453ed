#pragma once

#include "cash/ActLists.h"
#include "cash/CorrectionPanel.h"
#include "core/PeriodChooser.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/Report.h"

namespace cash {

/// "Règlements en instance": the acts of a day or a period that are unpaid or partly paid, settled one at a time.
/// Choosing dates, browsing and correcting are its three modes. Acts are selected by their `date`; what the list shows
/// is the date of the service. A settled act stays listed, with its new code, until the next selection.
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
    /// Shows the current act in the correction panel; false when it is gone.
    bool LoadCorrection();
    /// Writes code and amount of the act in hand, and shows them in its row. The total turns into plain text. False
    /// when the act is gone.
    bool SaveCorrection();
    /// Prints the list as shown, also an empty one.
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
    void ChooseDay();
    void ChoosePeriod();
    void OpenCorrection();
    /// Back to browsing: chooser and correction panel go, the pictures come back.
    void Browse();
    void ShowPictures(bool shown);
    void ListAct(NamesOfActs& names);
    void ShowPlainTotal();

    QString FromDateUS; ///< chosen bounds as mm/dd/yyyy
    QString ToDateUS;
    basic::Int16 PendingRow;  ///< current row of Grid3, index into List3
    basic::Int16 ListRow;     ///< next free row of Grid3
    int CorrectedRow = 0;     ///< row of the act in hand, whatever row is clicked meanwhile
    double RunningAmount = 0; ///< dinars

    dao::Recordset PatientLookup, ServiceLookup;
    dao::Recordset PendingActs;

    dao::KeyList List3; ///< act on each row of Grid3
    QStringList List_R, List_HH;
    report::Report Report1;
};

} // namespace cash
