#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Engine.h"

#include <QSize>
#include <QString>
#include <array>

/// The working state that the screens share, each name as its rules call it.
namespace core {

/// "True" of the 16-bit flags: all bits set.
inline constexpr int True = -1;

inline constexpr int ResultAccepted = 22; ///< a practice was chosen and its code typed
inline constexpr int ResultDone = 1;
inline constexpr int ResultCancelled = 8;
inline constexpr int ResultPickerCancelled = -1;

extern QString DataFolder;    ///< folder of the open practice; set only after its files were found
extern QString DatabasePath;  ///< its database file
extern QString ConfigPath;    ///< its configuration file
extern QString ProgramFolder; ///< folder of the program itself; set at start

extern QString WorkspacePassword; ///< built at run time, kept in memory only
extern dao::Workspace TheWorkspace;
extern dao::Database TheDatabase;
extern dao::Recordset PatientsTable; ///< the four tables that stay open for the whole run
extern dao::Recordset PrestaTable;
extern dao::Recordset TextesTable;
extern dao::Recordset PermnTable;

extern QString QueryText;  ///< the statement last run; routines take theirs as a parameter
extern QString ReportName; ///< a template's file name during a print

extern QSize InitialScreen; ///< the display size in pixels found at start
extern bool DisplayChanged; ///< the working area was set to 1024 by 768
inline constexpr int Arabic = 1;
extern basic::Int16 LanguageMode; ///< of the tooltips: True for French, or Arabic

extern basic::Int16 DialogResult; ///< result of the last modal screen; also passes an option index to New_Mecano
extern QString PickedDate;        ///< shared text: the day of the picker, also for J_CAISSE; a caption for New_Mecano
extern QString ScratchText;       ///< a second such text: the error that ended an actualisation; read by no screen
extern basic::Int16 PickedDay;    ///< date passed to and from the picker; a day below 1 means nothing was chosen
extern basic::Int16 PickedMonth;
extern basic::Int16 PickedYear;
extern dao::Key SelectedPatient; ///< the patient found by card number; read by no screen

/// Configuration lines; F_Dep then keeps the dates of its last selection in the first two, and reads the second.
extern std::array<QString, 20> ConfigLines;

extern std::array<QString, 7> DayNamesShort;     ///< Sunday first, fixed text of 10
extern std::array<QString, 7> DayNamesLong;      ///< Sunday first, fixed text of 10
extern std::array<QString, 12> MonthNames;       ///< fixed text of 20
extern std::array<QString, 12> MonthNamesArabic; ///< fixed text of 20; read by no screen

/// Fills the four name tables.
void FillCalendarNames();

/// Whether hover captions are French; the alternative is Arabic.
bool SpeaksFrench();

} // namespace core
