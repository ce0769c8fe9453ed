#pragma once

#include "acts/ArchiveColumns.h"
#include "core/KeyedList.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace acts {

/// "Patients": a list in which patients are archived or restored by hand. The search opens first and shows its results
/// on its own page. Nothing in the program calls FillPatientGrid, so the list stays empty.
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

    /// Limit of the list; a message tells the user when it is reached.
    static constexpr int MostListed = 16352;

    QString ListQuery; ///< the query of FillPatientGrid

    /// Lists the patients selected by ListQuery; drops unsaved toggles.
    void FillPatientGrid();
    /// Flips the current patient between récent and archived, only on the screen.
    void TogglePatientArchive();
    /// If a patient was toggled, writes the status of every listed patient, all or none. Deleted patients are skipped.
    void SavePatientToggles();

    void Crecettes_Click(int index);
    void Grid1_Click();
    void Grid1_DblClick();

protected:
    void Form_Load() override;

private:
    forms::Label hint{"LHint", "La recherche montre les patients trouvés."}; ///< while the list is empty

    void BuildForm();
    void ListPatient();

    dao::Recordset PatientSet;
    core::KeyedList List1{Grid1}; ///< the patients listed
    ArchiveColumns Statuses{List1, IsRecent, IsArchived};
};

} // namespace acts
