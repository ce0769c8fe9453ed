#pragma once

#include "acts/ArchiveColumns.h"
#include "core/KeyedList.h"
#include "core/lists.h"
#include "data/PaymentCode.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

#include <QStringList>

namespace acts {

/// The day sheet: how many acts each service received on a day, and every act of the day with its patient, hour, type,
/// payment code and archive status, "récent" (visible) or archived. It creates no acts; it writes only the archive
/// status of acts toggled by hand, the card display option, and the result of New_Mecano.
///
/// `Grid1` and its totals show the last fill; until the day is shown again, a toggle changes only `Grid2` and its
/// totals.
class New_Act : public forms::Form {
    Q_OBJECT
public:
    New_Act();

    enum Page { SheetPage, DisplayPage };
    forms::TabStrip SSTab1{"SSTab1"};
    /// The shown day as dd/mm/yyyy. Set when the day changes, read by ShowDay.
    forms::Label DayLabel{"Label1(3)"};
    enum Action { DayBefore, DayAfter, LeaveSheet, LeaveDisplay, Toggle, PickDay };
    forms::ControlArray<forms::Picture, 6> Image1{"Image1"};
    enum ServiceColumn { Unit, Recent, Archived, Total };
    forms::Grid Grid1; ///< the services
    enum ActColumn { ActUnit, Patient, ServiceDate, Hour, Type, PayCode, IsRecent, IsArchived };
    forms::Grid Grid2; ///< the acts
    enum CountOf { RecentSum = 1, ArchivedSum, WholeSum };
    forms::ControlArray<forms::FigureLabel, 3, 1> Label4{"Label4"}; ///< under Grid1
    forms::ControlArray<forms::FigureLabel, 3, 1> LT{"LT"};         ///< under Grid2

    /// The share of visible acts; its value is the number of acts skipped between two visible ones.
    enum Share { AllActs, OneInTwo, OneInThree, OneInFour, OneInFive };
    forms::ControlArray<forms::OptionButton, 5> Option1{"Option1"};
    forms::Label OptionLabel{"Label1(13)", "//"}; ///< caption of the chosen option
    forms::Picture Image2{"Image2"};              ///< starts the actualisation
    forms::Panel SSPanel1{"SSPanel1", "Actes sur fiche patient"};
    enum CardDisplayOption { FullDisplay, LimitedDisplay };
    forms::ControlArray<forms::OptionButton, 2> SSOption2{"SSOption2"};
    forms::DateField Text1{"Text1"}; ///< its date is never read

    void LoadLookupLists();
    /// Reloads the sheet for the day of DayLabel; shows a message when the day has no acts.
    void ShowDay();
    bool DayHasActs();
    /// Fills both grids and all totals. Raises 6 when a count exceeds 16 bits.
    void FillDaySheet();
    void ClearDaySheet();

    /// Flips the current act between récent and archived, only on the screen. Archiving an act of code "R-" asks first.
    void ToggleActArchive();
    /// If an act was toggled, writes the status of every listed act, all or none. Acts deleted meanwhile are skipped.
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
    void BuildForm();
    void NamePictures();
    void FocusShare(int page);
    void BuildSheetPage();
    void BuildDisplayPage();
    void OpenRecords();
    void LoadOption();
    void MoveDay(int days);
    void AddServiceRow();
    void AddServiceActs();
    void AddAct();
    void ShowServiceTotals();

    QString DayDateUS;                                   ///< the shown day as mm/dd/yyyy
    basic::Int16 SheetRecent, SheetArchived, SheetTotal; ///< of the services in Grid1, as filled
    QString CardDisplay;                                 ///< `RC` as stored
    basic::Int16 SelectedOption;

    dao::Recordset PrestaList;
    dao::Recordset DayCount;
    dao::Recordset ServiceActs;
    dao::Recordset PatientsRS; ///< for looking up names; reopened at each fill
    dao::Recordset ActesRS;    ///< for saving the statuses; reopened at each fill

    core::KeyedList Services{Grid1};
    core::KeyedList List1{Grid2}; ///< the acts of the day
    ArchiveColumns Statuses{List1, IsRecent, IsArchived};
    const QStringList List_R = data::PaymentCodes();
    const QStringList List_HH = core::HourSlots();
};

} // namespace acts
