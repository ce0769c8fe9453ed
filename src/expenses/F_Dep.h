#pragma once

#include "core/PeriodChooser.h"
#include "expenses/EntryPanel.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace expenses {

/// "Dépenses": the practice's ordinary expenses of a day or a period, entered, changed and deleted one at a time.
/// Choosing dates, browsing and entering are its three modes; it opens browsing, on today's expenses. A new expense
/// stands at the end of the list, whatever its date, until the next selection.
class F_Dep : public forms::Form {
    Q_OBJECT
public:
    F_Dep();

    forms::Panel SSPanel1{"SSPanel1"}; ///< caption: what is listed
    enum ListColumn { Number, Date, Object, Amount };
    forms::Grid Grid1;
    forms::FigureLabel Label5{"Label5"}; ///< total of the list
    enum Action { New, Modify, Remove, Select, Quit };
    forms::ControlArray<forms::Picture, 5> Crecettes{"Crecettes"};
    EntryPanel SSPanel3;
    core::PeriodChooser Dates; ///< SSTab2: the day or period to list
    forms::Bulle Bulle;

    /// Lists the expenses that QueryText selects; finding none is not told.
    void FillExpenses();
    /// Sums the amounts as they are shown; a sum of exactly 0 shows nothing.
    void ShowTotal();
    /// Writes the expense in hand, or a new one, and shows it in its row. Raises 3421 when the text isn't a date that
    /// exists, 6 when the amount is past all bounds, 3167 when the expense is gone; nothing was written then.
    void SaveExpense(const TypedExpense& typed);
    /// Deletes the current expense when the user confirms it. One that is gone already leaves the list as well.
    void DeleteExpense();

    void Grid1_Click();
    void Grid1_DblClick();
    void Crecettes_Click(int index);
    void Image2_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void ChooseDates();
    void ChooseDay();
    void ChoosePeriod();
    void EnterNew();
    void OpenChange();
    void OpenEntry(const QString& title, const TypedExpense& shown);
    void AcceptEntry();
    /// Back to browsing: chooser and entry panel go, the pictures come back.
    void Browse();
    void ShowPictures(bool shown);
    void ShowRow(int row, const TypedExpense& expense);
    void RemoveLine(int row);

    dao::Recordset ListRecordset; ///< the latest selection, and what is edited
    bool EntryIsNew = false;
    int SelectedRow = 0;      ///< row of Grid1 last clicked, index into List1
    dao::Key SelectedNum = 0; ///< expense being changed
    int ChangedRow = 0;       ///< its row, whatever row is clicked meanwhile
    dao::KeyList List1;       ///< expense on each row of Grid1
};

} // namespace expenses
