#include "core/lists.h"

#include "data/PaymentCode.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Grid.h"

namespace PaymentCode = data::PaymentCode;

namespace core {

namespace {

QString PayCodeTip(int code)
{
    switch (code) {
    case PaymentCode::NP:
        return "NP\u00A0: en instance, valeur théorique 0";
    case PaymentCode::RMinus:
        return "R-\u00A0: en instance, valeur théorique\u00A0: le tarif moins le montant reçu";
    case PaymentCode::P:
        return "P\u00A0: réglé, valeur théorique\u00A0: le tarif";
    case PaymentCode::RPlus:
        return "R+\u00A0: réglé, valeur théorique\u00A0: le montant reçu";
    case PaymentCode::Gr:
        return "Gr\u00A0: réglé, valeur théorique 0";
    default:
        return "AB\u00A0: réglé, valeur théorique 0";
    }
}

} // namespace

QString PayCodeTips()
{
    QStringList tips;
    for (int code = PaymentCode::NP; code <= PaymentCode::AB; ++code)
        tips << PayCodeTip(code);
    return tips.join('\n');
}

void FillPayCodes(forms::ComboBox& codes)
{
    codes.clear();
    codes.addItems(data::PaymentCodes());
    for (int code = 0; code < codes.count(); ++code)
        codes.setItemData(code, PayCodeTip(code), Qt::ToolTipRole);
    codes.SetListIndex(0);
}

QStringList HourSlots()
{
    QStringList slots;
    for (int hour = 8; hour <= 17; ++hour)
        slots << QStringLiteral(" %1-%2").arg(hour).arg(hour + 1);
    return slots;
}

QString ListLine(const QStringList& list, int line)
{
    if (line < 0 || line >= list.size())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    return list[line];
}

bool FindKey(dao::Recordset& lookup, dao::Key key)
{
    if (lookup.RecordCount() == 0)
        return false;
    lookup.FindFirst(key);
    return !lookup.NoMatch();
}

bool DeleteKey(dao::Recordset& rows, dao::Key key)
{
    if (!FindKey(rows, key))
        return false;
    try {
        rows.Delete();
    } catch (const basic::RuntimeError& error) {
        if (error.Code() != basic::Error::RecordDeleted)
            throw;
        return false;
    }
    return true;
}

bool ConfirmsDeletion(forms::Grid& list, int row, const QString& number)
{
    list.SelectRow(row); // alone: several may be chosen for copying
    return forms::MsgBox("Confirmer supression de ligne N° " + number, forms::Icon::Question, "Confirmation",
                         forms::Buttons::NoYes) == forms::Answer::Yes;
}

void ReportDeletedLine()
{
    forms::MsgBox("Cette ligne n'existe plus : elle a été supprimée entre-temps.", forms::Icon::Critical, "ATTENTION");
}

QString TextOrNothing(const dao::Field& field)
{
    return field.IsNull() ? QString() : field.Text();
}

} // namespace core
