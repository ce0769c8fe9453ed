#include "acts/PatientCells.h"

namespace acts {

QString AfterBlank(const dao::Field& field)
{
    return field.IsNull() ? QString() : " " + field.Text();
}

QString SexLetter(const dao::Field& sex)
{
    return !sex.IsNull() && sex.Long() == 0 ? QStringLiteral("M") : QStringLiteral("F");
}

} // namespace acts
