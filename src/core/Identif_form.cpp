#include "core/Identif.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace core {

void Identif::BuildForm()
{
    constexpr int usualLength = 20;
    constexpr int longestLength = 30; // of the R.I.B.
    constexpr int width = 416;
    for (int field = 0; field < Identifiers; ++field)
        Text1[field].setMaxLength(field == Identifiers - 1 ? longestLength : usualLength);
    Dress(Image1[Accept], "accept", "Enregistrer", Command::Accept);
    Dress(Image1[Leave], "quit", "Quitter sans enregistrer", Command::Leave);
    setAccessibleName("Identification");

    Inside(SSPanel1, Column{
                         Pairs{
                             {&NewLabel("Label1(0)", " R.C."), &Text1[0]},
                             {&NewLabel("Label1(1)", " Id. Fiscale"), &Text1[1]},
                             {&NewLabel("Label1(2)", " Article"), &Text1[2]},
                             {&NewLabel("Label1(3)", " Téléphone"), &Text1[3]},
                             {&NewLabel("Label1(4)", " Fax"), &Text1[4]},
                             {&NewLabel("Label1(5)", " Cpte Banc."), &Text1[5]},
                             {&NewLabel("Label1(6)", " Agence"), &Text1[6]},
                             {&NewLabel("Label1(7)", " R.I.B."), &Text1[7]},
                         },
                     });
    SSPanel1.setMinimumWidth(width);
    SetContent(Column{
        SSPanel1,
        Item::Stretch(),
        Row{Item::Stretch(), Image1[Accept], Image1[Leave]},
    });
}

} // namespace core
