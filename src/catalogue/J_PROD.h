#pragma once

#include "core/KeyedList.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace catalogue {

/// "Prestations": the services, their prices and their order in all lists of the program. The first position is
/// protected: its service can't be moved, deleted or displaced.
///
/// A service is stored when accepted. Moves are stored by "Quitter"; closing the window discards them.
class J_PROD : public forms::Form {
    Q_OBJECT
public:
    J_PROD();

    enum Move { MoveUp, MoveDown };
    forms::ControlArray<forms::Picture, 2> Image1{"Image1"};
    enum Action { New, Modify, Delete, Quit };
    forms::ControlArray<forms::Picture, 4> Crecettes{"Crecettes"};
    enum ListColumn { Number, Name, Price };
    forms::Grid Grid1;
    forms::Panel SSPanel3{"SSPanel3"}; ///< the entry panel
    forms::Panel SSPanel2{"SSPanel2"}; ///< its heading
    forms::TextBox NameField{"Text1(1)"};
    forms::AmountField PriceField{"Text1(2)"};
    enum Choice { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image2{"Image2"};
    forms::Bulle Bulle{"Bulle(1)"};

    /// Lists the services in their order; opens the entry panel if there are none.
    void LoadServices();
    /// Stores the entry: as a new row at the end if IsNew, otherwise in the current service. If that row no longer
    /// exists, shows a message and removes it from the list.
    void SaveService();
    /// Deletes the current service after confirmation. Refuses the first service and any service used by an act.
    void DeleteService();
    /// Swaps the current service with its neighbour, only on the screen.
    void MoveService(Move direction);
    /// Writes the order of the list, all or none. Deleted services are skipped; services added by others keep their
    /// position.
    void WriteServiceOrder();

    void Grid1_Click();
    void Grid1_DblClick();
    void Image1_Click(int index);
    void Image2_Click(int index);
    void Crecettes_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void OpenServices();
    void EnterNew();
    void EnterModification();
    /// Loads the current service into the entry panel; false when it no longer exists.
    bool LoadServiceFields();
    void ShowEntry(const QString& heading);
    void AcceptEntry();
    void CloseEntry();
    void ShowServiceButtons(bool shown);

    void AddService();
    /// False when the current service no longer exists.
    bool ChangeService();
    void WriteFields(int row);
    void ShowFields(int row);

    enum class Removal { Done, InUse, Gone };
    Removal Remove(dao::Key service);
    static bool IsUsedByAct(dao::Key service);
    static void ReportInUse();
    void ReportGone();
    /// Removes the current service from the list.
    void DropRow();

    dao::Recordset ServiceRecords; ///< in their order
    bool IsNew = false; ///< saving adds a row; stays set, so that a modification after a new service adds a row too
    bool OrderDirty = false;
    core::KeyedList List1{Grid1}; ///< the services, in the order of the list
};

} // namespace catalogue
