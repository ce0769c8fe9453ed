#pragma once

#include "core/KeyedList.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

#include <optional>

namespace acts {

/// Searches for patients by card number or by name, sex and status. Read-only. The criteria page covers the result page
/// until a search by name finds somebody; no patient can be chosen from the results. DialogResult is 22, with
/// SelectedPatient set, when a card number was found, and 8 on cancel.
class New_Rech : public forms::Form {
    Q_OBJECT
public:
    New_Rech();

    forms::Panel SSPanel1{"SSPanel1", "Recherche"}; ///< the result page
    enum Page { NumberPage, NamesPage };
    forms::TabStrip SSTab1{"SSTab1"}; ///< the criteria
    enum Criterion { CardNumber, LastName, FirstName };
    forms::ControlArray<forms::TextBox, 3> Text2{"Text2"};
    enum { NoCriterion = 2 }; ///< in both frames; 0 and 1 are the stored values
    forms::ControlArray<forms::OptionButton, 3> SSOption1{"SSOption1"}; ///< sex
    forms::ControlArray<forms::OptionButton, 3> SSOption2{"SSOption2"}; ///< status
    enum Choice { FindNumber, CancelNumber, FindNames, CancelNames };
    forms::ControlArray<forms::Picture, 4> Image2{"Image2"};

    enum ListColumn { Number, Name, GivenName, Birth, Sex, Telephone, Town, Card, Archived };
    forms::Grid Grid2;
    enum Way { Close, Back, Leave };
    forms::ControlArray<forms::Picture, 3> Image4{"Image4"};

    /// Searches the card number as text: "0123" and "123" are different cards. Shows a message on a miss. Raises 3075
    /// if it contains a quote.
    bool FindByCard();
    /// The statement that selects the matching patients in order of name, which is also left in QueryText. Shows a
    /// message and returns none if no patient matches. The typed text isn't escaped: "*" and "?" are wildcards, a quote
    /// raises 3075.
    std::optional<QString> BuildPatientQuery();
    /// Lists the patients that a statement selects. Raises 6 past 32,767 patients.
    void FillResultGrid(const QString& selection);

    void Image2_Click(int index);
    void Image4_Click(int index);
    void Grid2_Click();
    void Grid2_DblClick();

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void BuildCriteria();
    void SearchNumber();
    void SearchNames();
    void Cancel();
    void Refuse(const QString& reason, int field);
    void ShowCriteria();
    void ShowResults();
    void ListPatient();

    forms::Panel criteria{"PCriteres"};
    dao::Recordset CardResult, ResultSet;
    core::KeyedList List1{Grid2}; ///< the patients found
};

} // namespace acts
