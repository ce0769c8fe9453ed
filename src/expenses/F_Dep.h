#pragma once

#include "core/KeyedList.h"
#include "core/PeriodChooser.h"
#include "expenses/EntryPanel.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace expenses {

/// "Dépenses": the practice's expenses of a day or period, entered, changed and deleted one at a time. Three modes:
/// choosing dates, browsing, entering; opens browsing today's expenses. A new expense is listed last, whatever its
/// date, until the next selection.
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

    /// Lists the expenses that a statement selects; no message when there are none.
    void FillExpenses(const QString& selection);
    /// Shows the sum of the amounts as listed; nothing if it is exactly 0.
    void ShowTotal();
    /// Writes the expense being edited, or a new one. Raises 3421 when the date doesn't exist or isn't dd/mm/yyyy, 6
    /// when the amount overflows, 3167 when the expense was deleted; nothing is written then.
    void WriteExpense(const TypedExpense& typed);
    /// Asks, then deletes the current expense. If another program has deleted it, shows a message and removes it from
    /// the list as well.
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
    void ListChosenDates(int acceptPicture);
    void EnterNew();
    void OpenChange();
    void OpenEntry(const QString& title, const TypedExpense& shown);
    void AcceptEntry();
    /// Returns to browsing: hides chooser and entry panel, shows the pictures.
    void Browse();
    void ShowPictures(bool shown);
    void ShowRow(int row, const TypedExpense& expense);
    /// Updates the row of the saved expense and confirms that it is saved.
    void ShowSaved(const TypedExpense& typed);
    void RemoveLine(int row);
    /// Reports that another program has deleted the expense of a row, and removes the row.
    void DropLine(int row);

    dao::Recordset ListRecordset; ///< the last selection; also used for edits
    bool EntryIsNew = false;
    dao::Key SelectedNum = 0; ///< expense being changed
    int ChangedRow = 0;       ///< row of SelectedNum, even if another row is clicked meanwhile
    core::KeyedList List1{Grid1, core::KeyedList::NoLimit}; ///< the expenses listed
};

} // namespace expenses
