#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

#include <QStringList>

namespace acts {

/// The day sheet: how many acts each service received on a day, and every act of the day with its patient, hour, type,
/// payment code and its standing as "récent" (visible) or archived. It creates no act. Its writes are the archive
/// standing of the acts toggled by hand, the card display option, and what New_Mecano gives back.
///
/// `Grid1` and the totals under it show the last fill; a toggle changes only `Grid2` and its totals until the day is
/// shown again.
class New_Act : public forms::Form {
    Q_OBJECT
public:
    New_Act();

    forms::TabStrip SSTab1{"SSTab1"};
    forms::Label DayLabel{
        "Label1(3)"}; ///< the shown day as dd/mm/yyyy; every move of the day writes it, ShowDay reads it
    enum Action { DayBefore, DayAfter, LeaveSheet, LeaveDisplay, Toggle, PickDay };
    forms::ControlArray<forms::Picture, 6> Image1{"Image1"};
    forms::Grid Grid1; ///< the services
    forms::Grid Grid2; ///< the acts
    enum CountOf { RecentSum = 1, ArchivedSum, WholeSum };
    forms::ControlArray<forms::FigureLabel, 3, 1> Label4{"Label4"}; ///< under Grid1
    forms::ControlArray<forms::FigureLabel, 3, 1> LT{"LT"};         ///< under Grid2

    forms::ControlArray<forms::OptionButton, 5> Option1{"Option1"}; ///< index: acts skipped between two visible ones
    forms::Label OptionLabel{"Label1(13)", "//"};                   ///< caption of the chosen option
    forms::Picture Image2{"Image2"};                                ///< starts the actualisation
    forms::Panel SSPanel1{"SSPanel1", "Actes sur fiche patient"};
    enum CardDisplayOption { FullDisplay, LimitedDisplay };
    forms::ControlArray<forms::OptionButton, 2> SSOption2{"SSOption2"};
    forms::DateField Text1{"Text1"}; ///< takes a date that nothing reads

    void LoadLookupLists();
    /// Reloads the sheet for the day of DayLabel; says so when the day holds no act.
    void ShowDay();
    bool DayHasActs();
    /// Fills both grids and all totals. Raises 6 when a count passes 16 bits.
    void FillDaySheet();
    void ClearDaySheet();

    /// Flips the current act between récent and archived, on the screen alone. Archiving an act of code "R-" asks
    /// first.
    void ToggleActArchive();
    /// Writes the standing of every listed act once one was toggled, all or none. An act deleted meanwhile is passed
    /// over.
    void SaveActToggles();
    void SaveCardDisplay();

    void Image1_Click(int index);
    void Image2_Click();
    void Option1_Click(int index);
    void Grid1_Click();
    void Grid2_Click();
    void Grid2_DblClick();

protected:
    void Form_Load() override;

private:
    /// The columns of Grid1 and of Grid2.
    enum ServiceColumn { Unit, Recent, Archived, Total };
    enum ActColumn { ActUnit, Patient, ServiceDate, Hour, Type, PayCode, IsRecent, IsArchived };

    void BuildForm();
    void NamePictures();
    void BuildSheetPage();
    void BuildDisplayPage();
    void OpenRecords();
    void LoadOption();
    void MoveDay(int days);
    void AddServiceRow();
    void AddServiceActs();
    void AddAct();
    void ShowActTotals();
    void ShowServiceTotals();

    QString DayDateUS;                                    ///< the shown day as mm/dd/yyyy
    basic::Int16 ActRow;                                  ///< next free row of Grid2
    basic::Int16 ServiceRow;                              ///< next free row of Grid1
    basic::Int16 ServiceRows;                             ///< services in Grid1
    basic::Int16 RecentCount, ArchivedCount, ListedCount; ///< of the acts in Grid2, as toggled
    basic::Int16 SheetRecent, SheetArchived, SheetTotal;  ///< of the services in Grid1, as filled
    bool TogglesPending = false;                          ///< a standing was changed and isn't written yet
    QString CardDisplay;                                  ///< `RC` as stored
    basic::Int16 SelectedOption;

    dao::Recordset PrestaList;
    dao::Recordset DayCount;
    dao::Recordset ServiceActs;
    dao::Recordset PatientsRS; ///< to look names up; opened anew at each fill, as is ActesRS
    dao::Recordset ActesRS;    ///< to write the standings: knows every act that the sheet lists

    dao::KeyList List1; ///< act on each row of Grid2
    QStringList List_HH, List_R;
};

} // namespace acts
