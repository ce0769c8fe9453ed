#pragma once

#include "core/KeyedList.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace analysis {

/// "Situation mensuelle": visible and archived acts of a month by service. Acts are selected by their fields `MM` and
/// `AA`, never by their date. While the choice is locked the month changes in steps; unlocked, month and year can be
/// entered and are applied together.
class Mens_Act : public forms::Form {
    Q_OBJECT
public:
    Mens_Act();

    forms::Panel SSPanel1{"SSPanel1", "Situation mensuelle"};
    enum ChoiceCaption { Month, Year };
    forms::ControlArray<forms::Label, 2> Label1{"Label1"};
    forms::ComboBox Combo1{"Combo1"};  ///< the months
    forms::AmountField Text1{"Text1"}; ///< the year
    enum Choice { Unlock, Apply };
    forms::ControlArray<forms::Picture, 2> Image2{"Image2"};
    enum Step { Previous, Next };
    forms::ControlArray<forms::Picture, 2> Image3{"Image3"};
    forms::Picture Image4{"Image4"}; ///< opens "Évolution"
    forms::Picture Image1{"Image1"}; ///< quits
    enum CountColumn { Unit, Recent, Archived, All };
    forms::Grid Grid1;
    forms::ControlArray<forms::FigureLabel, 3, Recent> Label4{"Label4"}; ///< column totals

    /// Counts the acts of the month shown. Raises 6 when a column's total exceeds 32,767.
    void RefreshMonth();

    void Grid1_Click();
    void Image2_Click(int index);
    void Image3_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void SetChoiceOpen(bool open);
    void ApplyChoice();
    void ShowMonthBefore();
    void ShowMonthAfter();
    void ClearMonth();
    void FillUnitRow();
    int CountActs(const QString& condition);
    void ShowTotals();

    basic::Int16 MonthNumber; ///< month shown, 1 to 12
    basic::Int16 YearNumber;  ///< year shown
    basic::Int16 TotalRecent, TotalArchived, TotalAll;
    dao::Recordset UnitRecords, CountRecords;
    core::KeyedList Services{Grid1};
};

} // namespace analysis
