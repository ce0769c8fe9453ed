#include "practice/demo/Demo.h"

#include "data/NewFolder.h"
#include "data/Practice.h"
#include "platform/host/Host.h"
#include "practice/demo/DemoPlan.h"
#include "practice/demo/DemoWords.h"
#include "practice/opening/PracticeData.h"

#include <algorithm>

namespace practice {
namespace {

data::PracticeSetup DemoSetup()
{
    return {.accessCode = DemoAccessCode,
            .letterhead = {"Cabinet du Dr Nadia BENMANSOUR", "Spécialiste en cardiologie", "Alger Centre",
                           "Tél. 021 63 00 00", "12, rue des Frères Bouadou", "Consultations sur rendez-vous",
                           "Du samedi au jeudi", "", "عيادة الدكتورة نادية بن منصور", "أمراض القلب والشرايين",
                           "الجزائر الوسطى", "الهاتف 021630000"},
            .language = data::TooltipLanguage::French};
}

std::vector<WorkingDay> WorkingDaysUntil(const QDate& until, std::optional<int> count)
{
    const QDate first = until.addMonths(-18);
    std::vector<WorkingDay> days{{.date = until}};
    for (QDate date = until.addDays(-1); count ? static_cast<int>(days.size()) < *count : date >= first;
         date = date.addDays(-1)) {
        if (IsWorkingDay(date))
            days.push_back({.date = date});
    }
    std::ranges::reverse(days);
    return days;
}

/// 20 to 60 acts a day, half as many on a half day; the last day is a full one.
void SpreadActs(std::vector<WorkingDay>& days, std::optional<int> wanted, Dice& dice)
{
    qint64 weights = 0;
    for (WorkingDay& day : days) {
        day.acts = day.IsHalfDay() ? dice.Between(10, 30) : dice.Between(20, 60);
        if (day.date == days.back().date)
            day.acts = 56;
        weights += day.acts;
    }
    if (!wanted)
        return;
    qint64 before = 0;
    for (WorkingDay& day : days) {
        const qint64 upTo = before + day.acts;
        day.acts = static_cast<int>(upTo * *wanted / weights - before * *wanted / weights);
        before = upTo;
    }
}

/// One expense on each Thursday, when the cash goes to the bank, three on the last day, the others on random days.
void SpreadExpenses(std::vector<WorkingDay>& days, int wanted, Dice& dice)
{
    int left = wanted;
    const int onLastDay = std::min(left, 3);
    days.back().expenses += onLastDay;
    left -= onLastDay;
    for (WorkingDay& day : days) {
        if (left > 0 && day.date.dayOfWeek() == Qt::Thursday) {
            ++day.expenses;
            --left;
        }
    }
    for (; left > 0; --left)
        ++days[static_cast<std::size_t>(dice.Below(static_cast<int>(days.size())))].expenses;
}

DemoPlan PlanDemo(const DemoOptions& options, Dice& dice)
{
    constexpr int mostDays = 4000;
    constexpr int largePractice = 100000;
    DemoPlan plan;
    plan.until = options.until.isValid() ? options.until : host::Today();
    const bool large = options.acts && *options.acts >= largePractice;
    std::optional<int> days = options.days;
    if (!days && options.acts)
        days = std::clamp(*options.acts / 40, 1, mostDays);
    plan.days = WorkingDaysUntil(plan.until, days);
    const int dayCount = static_cast<int>(plan.days.size());

    plan.patients = options.patients.value_or(options.acts ? std::clamp(*options.acts / 10, 30, 100000) : 3000);
    plan.services = options.services.value_or(large ? static_cast<int>(Services().size()) : 12);
    plan.appointments = options.acts ? std::clamp(*options.acts / 10, 40, large ? 20000 : 2000) : 2000;
    plan.deletedActs = options.acts ? std::clamp(*options.acts / 100, 10, large ? 2000 : 150) : 150;
    SpreadActs(plan.days, options.acts, dice);
    SpreadExpenses(plan.days,
                   options.expenses.value_or(options.acts ? std::max(*options.acts / 20, 3) : dayCount * 4 / 6), dice);
    return plan;
}

} // namespace

bool IsWorkingDay(const QDate& date)
{
    return date.dayOfWeek() != Qt::Friday;
}

int TariffRate(int position)
{
    constexpr int rateOfC = 1500;
    constexpr int rateOfK0 = 200;
    constexpr int step = 80;
    return position == 0 ? rateOfC : rateOfK0 + step * (position - 1);
}

QString TariffCode(int position)
{
    return position == 0 ? QStringLiteral("C") : "K" + QString::number(position - 1);
}

void MakeDemo(const QString& folder, const DemoOptions& options)
{
    data::RequireUnused(folder);
    data::NewFolder making(folder);
    Dice dice(options.seed);
    const DemoPlan plan = PlanDemo(options, dice);
    data::MakePracticeFiles(making.Path(), DemoSetup());
    {
        const PracticeData practice(making.Path());
        WriteServices(practice.Database(), plan);
        WriteTariffs(practice.Database());
        WriteCharges(practice.Database(), plan);
        WritePatients(practice.Database(), plan, dice);
        WriteDays(practice.Database(), plan, dice);
        WriteAppointments(practice.Database(), plan, dice);
        WriteDeletedActs(practice.Database(), plan, dice);
        // A few acts are of a service that is gone; a new one must not inherit them.
        dao::Transaction transaction(practice.Database());
        practice.Database().KeepKeysAboveReferences();
        transaction.Commit();
    }
    making.Complete();
}

} // namespace practice
