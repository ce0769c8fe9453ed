#pragma once

#include "core/KeyedList.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/Report.h"

#include <QStringList>

namespace planning {

/// "Planning": programmed versus performed. For one day, appointments and acts of each unit; for one unit and month,
/// the appointments by day and hour; also the list of a unit's appointments on a day, and the printed planning of a
/// day. A unit is a service. Read-only.
///
/// Day and month are independent; the month has its own unit. The board is disabled while a panel is open over it.
class Planning : public forms::Form {
    Q_OBJECT
public:
    Planning();

    forms::Panel SSPanel4{"SSPanel4"}; ///< the board
    forms::Label DayHeading{"Label1(4)", "Journée du"};
    enum DayStep { DayBefore, DayAfter };
    forms::ControlArray<forms::Picture, 2> Image2{"Image2"};
    enum BoardAction { ChooseDay, OpenList, ChooseMonth, Quit };
    forms::ControlArray<forms::Picture, 4> Image1{"Image1"};
    enum UnitColumn { Unit, Programmed, Performed, Difference };
    forms::Grid Grid1; ///< the day, unit by unit
    enum DayTotal { ProgrammedTotal = 5, PerformedTotal, DifferenceTotal };
    forms::ControlArray<forms::FigureLabel, 3, ProgrammedTotal> DayTotals{"Label1"};
    forms::Panel SSPanel2{"SSPanel2", "Unité --> "};
    enum MonthColumn { Dates, FirstHour };
    forms::Grid Grid3; ///< the month: a row for each day, a column for each hour slot

    forms::Panel SSPanel3{"SSPanel3", "  Journée du :"};
    forms::ControlArray<forms::DateField, 1> Text5{"Text5"}; ///< the board's day
    enum DayChoice { AcceptDay, CancelDay };
    forms::ControlArray<forms::Picture, 2> Image5{"Image5"};

    forms::Panel SSPanel5{"SSPanel5", "    Programme"};
    enum MonthChoice { UnitChoice, MonthOfYear };
    forms::ControlArray<forms::ComboBox, 2> Combo1{"Combo1"};
    forms::TextBox Text3{"Text3"}; ///< the year
    enum ProgrammeChoice { AcceptMonth, CancelMonth };
    forms::ControlArray<forms::Picture, 2> Image7{"Image7"};

    forms::Panel SSPanel1{"SSPanel1"}; ///< the appointments of a unit on the board's day
    forms::Label UnitLine{"Label1(26)", "ZOOM"};
    forms::Label DayLine{"Label1(9)", "ZOOM"};
    enum ListColumn { Number, Hour, LastName, FirstName, Phone, Town, Card };
    forms::Grid Grid2;
    enum ListAction { OpenPrint, CloseList, CancelPrint, Print };
    forms::ControlArray<forms::Picture, 4> Image4{"Image4"};
    forms::Panel SSPanel6{"SSPanel6", "Imprimer ..."};
    enum PrintOption { CurrentUnit, AllUnits };
    forms::ControlArray<forms::OptionButton, 2> SSOption1{"SSOption1"};
    report::Report Report1;

    void LoadPlanningLists();
    /// Shows the day in Text5(0). For an invalid date shows a message, leaves the board unchanged and returns false.
    bool RefreshDay();
    /// Raises 6 when a count or total exceeds 16 bits.
    void CountDayByUnit();
    void TotalDayCounts();
    /// Lays out the days of the chosen month, marking days off and today.
    void PrepareMonthGrid();
    /// Counts the appointments of the chosen unit in each day and slot of the month laid out.
    void FillMonthCounts();
    void LoadDayAppointments();
    /// Prints the appointments of the board's day, for its current unit or all.
    void PrintPlanning();

    void Grid1_Click();
    void Grid1_DblClick();
    void Grid2_Click();
    void Grid2_DblClick();
    void Grid3_Click();
    void Image1_Click(int index);
    void Image2_Click(int index);
    void Image4_Click(int index);
    void Image5_Click(int index);
    void Image7_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void DressPictures();
    void BuildBoard();
    void BuildChoices();
    void BuildList();

    void OpenOverBoard(QWidget& panel, QWidget& firstField);
    void CloseOverBoard(QWidget& panel, QWidget& next);
    void ShowMonth();
    /// Counts the day's rows of each unit; `dayOfTable` is the table and its date field.
    void CountUnits(int column, const QString& dayOfTable);
    QString MonthDay(int day);
    void ShowDayList();
    void ShowPatient(int row, const QStringList& patient);
    /// The unit on the current row of Grid1; 0 if there is none.
    dao::Key CurrentUnitKey() const;

    QString DayDateUS; ///< the board's day as mm/dd/yyyy

    core::KeyedList List1{Grid2}; ///< the appointments listed
    core::KeyedList List2{Grid1}; ///< the units, also by line of Combo1(0)
    QStringList List4;            ///< the hour slots
};

} // namespace planning
