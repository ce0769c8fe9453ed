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

bool IsArchivedPatient(const dao::Field& status)
{
    return !status.IsNull() && status.Long() == 1;
}

} // namespace acts
