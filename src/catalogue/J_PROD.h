#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"

namespace catalogue {

/// "Prestations": the services, their prices and the order in which every list of the program shows them. The first
/// place is protected: the service there is neither moved nor deleted, and nothing takes its place.
///
/// A service is stored as it is accepted. Moves stay on the screen until "Quitter" writes the order;
/// closing the window discards them.
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

    /// Lists the services in their order; a table without any opens the entry of the first one.
    void LoadServices();
    /// Stores what was typed: as a new row behind those listed when IsNew, else in the current service. If
    /// that row no longer exists, says so and removes it from the list.
    void SaveService();
    /// Deletes the current service once the user has confirmed. Refuses the first service and any service that an
    /// act uses.
    void DeleteService();
    /// Swaps the current service with its neighbour, on the screen alone.
    void MoveService(Move direction);
    /// Writes the order of the list, all or none. A service that is gone is passed over; one that was added elsewhere
    /// keeps its own place.
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
    /// Shows the current service in the entry panel; false when it is gone.
    bool LoadServiceFields();
    void ShowEntry(const QString& heading);
    void AcceptEntry();
    void CloseEntry();
    void ShowServiceButtons(bool shown);

    void AddService();
    /// False when the current service is gone.
    bool ChangeService();
    void WriteFields(int row);
    void ShowFields(int row);

    enum class Removal { Done, InUse, Gone };
    Removal Remove(dao::Key service);
    static bool IsUsedByAct(dao::Key service);
    static void ReportInUse();
    void ReportGone();
    /// Takes the current service out of the list.
    void DropRow();

    dao::Recordset ServiceRecords; ///< in their order
    bool IsNew = false; ///< saving adds a row. It is never reset: a modification after a new service adds one as well
    bool OrderDirty = false;
    basic::Int16 CurrentRow; ///< of Grid1, index into List1
    dao::KeyList List1;      ///< service on each row of Grid1
};

} // namespace catalogue
