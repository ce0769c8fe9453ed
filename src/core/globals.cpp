#include "core/globals.h"

#include "platform/basic/Numbers.h"

namespace core {

QString DataFolder;
QString DatabasePath;
QString ConfigPath;
QString ProgramFolder;
QString WorkspacePassword;
dao::Workspace TheWorkspace;
dao::Database TheDatabase;
dao::Recordset PatientsTable;
dao::Recordset PrestaTable;
dao::Recordset TextesTable;
dao::Recordset PermnTable;
QString QueryText;
QString ReportName;
QSize InitialScreen;
bool DisplayChanged = false;
basic::Int16 LanguageMode = True;
basic::Int16 DialogResult;
QString PickedDate;
QString ScratchText;
basic::Int16 PickedDay;
basic::Int16 PickedMonth;
basic::Int16 PickedYear;
dao::Key SelectedPatient = 0;
std::array<QString, 20> ConfigLines;
std::array<QString, 7> DayNamesShort;
std::array<QString, 7> DayNamesLong;
std::array<QString, 12> MonthNames;
std::array<QString, 12> MonthNamesArabic;

namespace {

template <std::size_t Count>
void Fill(std::array<QString, Count>& table, int width, const char* const (&names)[Count])
{
    for (std::size_t i = 0; i < Count; ++i)
        table[i] = basic::FixedText(QString::fromUtf8(names[i]), width);
}

} // namespace

void FillCalendarNames()
{
    Fill(DayNamesShort, 10, {"Dim", "Lun", "Mar", "Mer", "Jeu", "Ven", "Sam"});
    Fill(DayNamesLong, 10, {"Dimanche", "Lundi   ", "Mardi   ", "Mercredi", "Jeudi   ", "Vendredi", "Samedi  "});
    Fill(MonthNames, 20,
         {"Janvier", "Février", "Mars", "Avril", "Mai", "Juin", "Juillet", "Août", "Septembre", "Octobre", "Novembre",
          "Décembre"});
    Fill(MonthNamesArabic, 20,
         {"جـانـفي", "فـبرايـر", "مــارس", "أفـريــل", "مــاي", "جــوان", "جـويـلية", "أوت", "سبـتـمـبر", "أكـتـوبـر",
          "نـوفـمـبر", "ديـسـمـبر"});
}

bool SpeaksFrench()
{
    return LanguageMode == True;
}

} // namespace core
