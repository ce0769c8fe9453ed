#pragma once

#include "core/KeyedList.h"
#include "core/NameLookup.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/Report.h"

namespace acts {

/// The journal of deleted acts, whole or for one day of deletion. Its lines can be removed for good and printed; the
/// acts themselves aren't restored. Browsing and choosing a day are its two modes.
class F_Sppr : public forms::Form {
    Q_OBJECT
public:
    F_Sppr();

    forms::Panel SSFrame1{"SSFrame1"};                    ///< list and pictures; disabled while a day is being chosen
    forms::Panel SSPanel1{"SSPanel1", "Actes supprimés"}; ///< caption: what is listed
    enum ListColumn { ActDate, ActTime, Unit, Code, Payment, LastName, FirstName, RemovalDate, RemovalTime };
    forms::Grid Grid1;
    forms::ComboBox Combo1{"Combo1"}; ///< the payment codes, never shown
    enum Action { OtherDate, Remove, Print, Quit };
    forms::ControlArray<forms::Picture, 4> Image1{"Image1"};
    forms::Panel SSPanel2{"SSPanel2", "Autre date"};
    forms::DateField Text1{"Text1"};
    enum Choice { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image2{"Image2"};
    forms::Bulle Bulle{"Label3"};

    void FillCodeList();
    /// Lists the lines of JournalSet. Raises 6 past 32,767 lines.
    void FillDeletedGrid();
    /// Selects the lines deleted on the typed day. When the text isn't a date or the day has no lines, shows a message,
    /// keeps the list and returns false.
    bool SelectDeletedDate();
    /// Asks, then deletes the current line from the journal. If another program has deleted it, shows a message and
    /// removes it from the list as well.
    void DeleteJournalLine();
    /// Prints what is listed; does nothing on an empty list.
    void PrintJournal();

    void Image1_Click(int index);
    void Image2_Click(int index);
    void Grid1_Click();

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void ChooseDate();
    void Browse();
    void ListAct(core::NameLookup& services, core::NameLookup& patients);

    dao::Recordset JournalSet;              ///< what is listed
    dao::Recordset PrestaByNum, PatientsRS; ///< for looking up names
    core::KeyedList List1{Grid1};           ///< the journal lines listed
    report::Report Report1;
};

} // namespace acts
