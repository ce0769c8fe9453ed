#include "platform/basic/Dates.h"
#include "practice/demo/DemoPlan.h"
#include "practice/demo/DemoWords.h"
#include "practice/demo/RowBatches.h"

namespace practice {
namespace {

QString Telephone(Dice& dice)
{
    const QString number = QString::number(dice.Between(10000000, 99999999));
    return QString("0%1%2 %3 %4 %5")
        .arg(QString::number(dice.Between(5, 7)), number.left(2), number.mid(2, 2), number.mid(4, 2), number.mid(6, 2));
}

/// Unique because it contains the patient's key; text, often with leading zeros.
QString CardNumber(const QDate& birth, int patient)
{
    return birth.toString("yy") + QString("%1").arg(patient, 6, 10, QChar('0')) + birth.toString("MM");
}

store::Value NullIf(bool missing, const QString& text)
{
    return missing ? store::Value() : store::Value(text);
}

void FillPatient(dao::Recordset& patients, int key, const QDate& until, Dice& dice)
{
    constexpr int daysOfALife = 90 * 365;
    const bool woman = dice.Percent(54);
    const QDate birth = until.addDays(-dice.Between(30, daysOfALife));
    patients["num"] = key;
    patients["nom"] = dice.Pick(FamilyNames());
    patients["Prenom"] = dice.Pick(woman ? FirstNamesOfWomen() : FirstNamesOfMen());
    patients["Naiss"] = NullIf(dice.OneIn(50), basic::DateText(birth));
    patients["Sexe"] = woman ? 1 : 0;
    patients["tel"] = NullIf(dice.Percent(15), Telephone(dice));
    patients["ville"] = NullIf(dice.Percent(8), dice.Pick(Towns()));
    patients["N_carte"] = NullIf(dice.Percent(10), CardNumber(birth, key));
    patients["diagno"] = NullIf(dice.Percent(20), dice.Pick(Diagnoses()));
    patients["Flag_H"] = dice.Percent(12) ? 1 : 0;
}

} // namespace

void WritePatients(const dao::Database& database, const DemoPlan& plan, Dice& dice)
{
    RowBatches batches(database, "Patients", plan.patients);
    dao::Recordset patients = database.OpenRecordset("Patients");
    for (int key = 1; key <= plan.patients; ++key) {
        patients.AddNew();
        FillPatient(patients, key, plan.until, dice);
        patients.Update();
        batches.Count();
    }
    batches.Finish();
}

void WriteAppointments(const dao::Database& database, const DemoPlan& plan, Dice& dice)
{
    constexpr int aDay = 38;
    constexpr int mostDaysAhead = 36; // six weeks of working days
    const int daysNeeded = std::max(1, plan.appointments / aDay);
    const int daysAhead = std::min(mostDaysAhead, daysNeeded * 2 / 3);
    QDate date = plan.until;
    for (int ahead = 0; ahead < daysAhead;) {
        date = date.addDays(1);
        ahead += IsWorkingDay(date) ? 1 : 0;
    }
    std::vector<QDate> dates; // from the last one back
    for (; static_cast<int>(dates.size()) < daysNeeded; date = date.addDays(-1)) {
        if (IsWorkingDay(date) || date == plan.until)
            dates.push_back(date);
    }

    RowBatches batches(database, "Plani", plan.appointments);
    dao::Recordset appointments = database.OpenRecordset("Plani");
    for (int key = 1; key <= plan.appointments; ++key) {
        const auto day = dates.size() - 1 - static_cast<std::size_t>(qint64{key - 1} * daysNeeded / plan.appointments);
        const bool halfDay = dates[day].dayOfWeek() == Qt::Saturday;
        appointments.AddNew();
        appointments["num"] = key;
        appointments["date"] = basic::DateText(dates[day]);
        appointments["Num_Presta"] = dice.Between(1, plan.services);
        appointments["HH"] = dice.Below(halfDay ? 5 : 10);
        const bool patientGone = dice.OneIn(400);
        appointments["num_patient"] = patientGone ? plan.patients + key : dice.Between(1, plan.patients);
        appointments.Update();
        batches.Count();
    }
    batches.Finish();
}

} // namespace practice
