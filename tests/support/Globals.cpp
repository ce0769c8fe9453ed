#include "support/Globals.h"

#include "core/globals.h"

using namespace core;

namespace tests {

void ResetGlobals()
{
    PatientsTable = PrestaTable = TextesTable = PermnTable = dao::Recordset();
    TheDatabase.Close();
    TheDatabase = dao::Database();
    TheWorkspace.Close();
    TheWorkspace = dao::Workspace();
    for (QString* text : {&DataFolder, &DatabasePath, &ConfigPath, &ProgramFolder, &WorkspacePassword, &QueryText,
                          &ReportName, &PickedDate, &ScratchText})
        text->clear();
    InitialScreen = QSize();
    DisplayChanged = false;
    LanguageMode = True;
    DialogResult = PickedDay = PickedMonth = PickedYear = 0;
    SelectedPatient = 0;
    ConfigLines.fill(QString());
}

} // namespace tests
