#pragma once

#include "platform/basic/Int16.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Layout.h"

namespace core {

/// The date picker: shows one month, Saturday to Friday. In: PickedDay, PickedMonth and PickedYear; a year or month
/// outside its lists becomes the nearest one. Out: the chosen date in the same variables and in PickedDate, or -1 in
/// PickedDay on cancel.
///
/// The days are one tab stop: arrows move the chosen day, Page Up and Page Down the month, Enter accepts.
class Q_Date_2 : public forms::Form {
    Q_OBJECT
public:
    static constexpr int Cells = 42; ///< six rows of seven columns, numbered from 1

    Q_Date_2();

    forms::Label Label2{"Label2"};    ///< the chosen day
    forms::ComboBox Combo1{"Combo1"}; ///< months
    forms::ComboBox Combo2{"Combo2"}; ///< years 2001 to 2099
    forms::ControlArray<forms::TextBox, Cells, 1> Text2{"Text2"};
    forms::ControlArray<forms::Button, Cells, 1> SSCommand1{"SSCommand1"};
    enum Action { AcceptDay, CancelDay, PreviousMonth, NextMonth, PreviousYear, NextYear };
    forms::ControlArray<forms::Picture, 6> Image2{"Image2"};

    void Combo1_Click();
    void Combo2_Click();
    void SSCommand1_Click(int cell);
    void Text2_Click(int cell);
    void Image2_Click(int index);

protected:
    void Form_Load() override;
    bool Form_QueryUnload() override;
    void EscapePressed() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildForm();
    forms::Layout DaysOfMonth();
    void EmptyCells();
    void FillLists();
    void ChooseByHand(int cell);
    bool DaysHaveFocus() const;
    void LayOutMonth();
    void ShowArrows();
    void Accept();
    void Cancel();
    void StepList(forms::ComboBox& list, int step);
    /// Handles the arrow and page keys: moves by days within the month, or by a month or year. False for other keys.
    bool MoveChoice(int key);

    basic::Int16 FirstDayColumn; ///< column of the 1st of the month, 0 (Saturday) to 6
    basic::Int16 MonthLength;    ///< days in the month shown
    bool loadedOnce = false;     ///< from then on a change of year rebuilds the month
    bool accepted = false;
};

} // namespace core
