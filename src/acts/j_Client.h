#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace acts {

/// "Patients": a list in which patients are moved between récents and archivés by hand. The search comes up first and
/// shows its results on a page of its own. The list stays empty until FillPatientGrid runs.
class j_Client : public forms::Form {
    Q_OBJECT
public:
    j_Client();

    forms::Panel SSPanel1{"SSPanel1", "Patients"};
    enum ListColumn { Number, LastName, FirstName, Sex, Telephone, Town, Diagnosis, IsRecent, IsArchived };
    forms::Grid Grid1;
    enum Count { Recent = 1, Archived, Listed };
    forms::ControlArray<forms::FigureLabel, 3, 1> LT{"LT"};
    enum Action { Archive, Quit, Search };
    forms::ControlArray<forms::Picture, 3> Crecettes{"Crecettes"};
    forms::Bulle Bulle;

    /// The most patients that the list shows; a message says so when it ends there.
    static constexpr int MostListed = 16352;

    QString ListQuery; ///< what FillPatientGrid lists

    /// Lists the patients that ListQuery selects; unsaved toggles are dropped.
    void FillPatientGrid();
    /// Flips the current patient between récent and archived, on the screen alone.
    void TogglePatientArchive();
    /// Writes the standing of every listed patient once one was toggled, all or none. A patient who is gone is
    /// skipped.
    void SavePatientToggles();

    void Crecettes_Click(int index);
    void Grid1_Click();
    void Grid1_DblClick();

protected:
    void Form_Load() override;

private:
    forms::Label hint{"LHint", "La recherche montre les patients trouvés."}; ///< while the list is empty

    void BuildForm();
    void ListPatient(int row);
    void ShowCounts();

    dao::Recordset PatientSet;
    bool TogglesPending = false; ///< a standing was changed and isn't written yet
    basic::Int16 RecentPatients, ArchivedPatients, ListedPatients;
    dao::KeyList List1; ///< patient on each row of Grid1
};

} // namespace acts
