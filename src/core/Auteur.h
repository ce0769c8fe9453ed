#pragma once

#include "core/FolderList.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace core {

/// The dialog "Explorer": the user chooses the data folder of a practice and types its access code. DialogResult is
/// ResultAccepted when both are right, 0 otherwise.
class Auteur : public forms::Form {
    Q_OBJECT
public:
    Auteur();

    forms::TextBox Text2{"Text2"};   ///< drive
    forms::Picture Image1{"Image1"}; ///< opens the drive of Text2
    FolderList Dir1{"Dir1"};
    FileList File1{"File1", "ZEP_ONE.MDB"};
    PathLabel Label1{"Label1"};    ///< path of the chosen folder
    forms::TextBox Text1{"Text1"}; ///< access code
    enum Choice { Accept, Cancel };
    forms::ControlArray<forms::Picture, 2> Image2{"Image2"};

    void Image1_Click();
    void Image2_Click(int index);
    void Dir1_Change();

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    /// Sets DataFolder and DatabasePath if the chosen folder contains the files of a practice; otherwise reports the
    /// missing one.
    bool CheckFolderFiles();
    /// Whether the typed code is the decimal text of twice the stored value. Raises 6 when that exceeds 16 bits.
    bool CheckAccessCode() const;
    /// Reports a database of the old format, with the command that makes a practice from it.
    bool CheckDatabaseFormat() const;

    forms::Label hint{"LHint"};
};

} // namespace core
