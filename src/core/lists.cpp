#include "core/lists.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

namespace core {

void FillPayLists(QStringList& List_R, QStringList& List_HH, forms::ComboBox* codes)
{
    List_R = {"NP", "R-", "P ", "R+", "Gr", "AB"};
    List_HH.clear();
    for (int hour = 8; hour <= 17; ++hour)
        List_HH << QStringLiteral(" %1-%2").arg(hour).arg(hour + 1);
    if (codes != nullptr) {
        codes->clear();
        codes->addItems(List_R);
        codes->SetListIndex(0);
    }
}

QString ListLine(const QStringList& list, int line)
{
    if (line < 0 || line >= list.size())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    return list[line];
}

int TakeRow(forms::Grid& grid, basic::Int16& nextRow)
{
    const int row = nextRow;
    if (row > grid.Rows() - 1)
        grid.AppendRow();
    ++nextRow;
    return row;
}

bool FindKey(dao::Recordset& lookup, dao::Key key)
{
    if (lookup.RecordCount() == 0)
        return false;
    lookup.FindFirst("num = " + QString::number(key));
    return !lookup.NoMatch();
}

QString TextOrNothing(const dao::Field& field)
{
    return field.IsNull() ? QString() : field.Text();
}

} // namespace core
