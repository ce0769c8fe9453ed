#include "data/PaymentCode.h"
#include "platform/basic/Dates.h"
#include "practice/demo/DemoPlan.h"
#include "practice/demo/DemoWords.h"
#include "practice/demo/RowBatches.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace practice {
namespace {

namespace PaymentCode = data::PaymentCode;

constexpr int MinutesStep = 5;
constexpr int StepsOfHour = 60 / MinutesStep;
constexpr int FirstHour = 8;
constexpr int SlotsOfDay = 10;
constexpr int SlotsOfHalfDay = 5;

QString TimeText(int step)
{
    return QString("%1:%2")
        .arg(FirstHour + step / StepsOfHour, 2, 10, QChar('0'))
        .arg(step % StepsOfHour * MinutesStep, 2, 10, QChar('0'));
}

/// The settlement of an act, by percentages in the order of the codes. Recent acts are more often pending.
int SettlementOf(int daysAgo, Dice& dice)
{
    constexpr std::array<int, 6> today{16, 12, 56, 8, 5, 3};
    constexpr std::array<int, 6> recent{9, 8, 66, 9, 5, 3};
    constexpr std::array<int, 6> older{2, 3, 77, 10, 5, 3};
    constexpr int recentDays = 45;
    constexpr int todaysDays = 7;
    return dice.Weighted(daysAgo < todaysDays ? today : daysAgo < recentDays ? recent : older);
}

double AmountOf(int settlement, int rate, Dice& dice)
{
    switch (settlement) {
    case PaymentCode::RMinus:
        return std::max(50, rate * dice.Between(2, 8) / 10 / 50 * 50);
    case PaymentCode::P:
        return dice.OneIn(150) ? rate + 0.5 : rate;
    case PaymentCode::RPlus:
        return rate + 100 * dice.Below(6);
    default:
        return 0;
    }
}

/// The tariff position of an act: mostly that of its service, sometimes any, rarely none (-1).
int CodeOf(int service, Dice& dice)
{
    const int lot = dice.Below(100);
    if (lot < 3)
        return -1;
    if (lot < 12)
        return dice.Below(TariffPositions);
    return Services()[static_cast<std::size_t>(service) % Services().size()].code;
}

/// Writes the acts and expenses of the days, tracking the cash.
/// The number of acts and expenses.
qint64 RowsOf(const DemoPlan& plan)
{
    qint64 rows = 0;
    for (const WorkingDay& day : plan.days)
        rows += day.acts + day.expenses;
    return rows;
}

class DayWriter {
public:
    DayWriter(const dao::Database& database, const DemoPlan& demo, Dice& generator)
        : plan(demo), dice(generator), batches(database, "Actes", RowsOf(plan)), acts(database.OpenRecordset("Actes")),
          expenses(database.OpenRecordset("Recettes"))
    {
        for (int step = 0; step < SlotsOfDay * StepsOfHour; ++step)
            times << TimeText(step);
        for (int position = 0; position < TariffPositions; ++position)
            codes << TariffCode(position);
        for (int service = 0; service < plan.services; ++service)
            weights.push_back(Services()[static_cast<std::size_t>(service) % Services().size()].weight);
    }

    void Write(const WorkingDay& day)
    {
        WriteActs(day);
        WriteExpenses(day);
    }

    void Finish() { batches.Finish(); }

private:
    void WriteActs(const WorkingDay& day)
    {
        std::vector<int> steps;
        steps.reserve(static_cast<std::size_t>(day.acts));
        for (int act = 0; act < day.acts; ++act)
            steps.push_back(dice.Below((day.IsHalfDay() ? SlotsOfHalfDay : SlotsOfDay) * StepsOfHour));
        std::ranges::sort(steps);
        std::vector<int> ofService(static_cast<std::size_t>(plan.services), 0);
        const QString date = basic::DateText(day.date);
        for (int act = 0; act < day.acts; ++act) {
            const int service = dice.Weighted(weights);
            const int daysAgo = static_cast<int>(day.date.daysTo(plan.until));
            // The last day has every code.
            const int settlement = daysAgo == 0 && act < 12 ? act % 6 : SettlementOf(daysAgo, dice);
            const bool keptVisible =
                ofService[static_cast<std::size_t>(service)]++ % 3 == 0 || settlement == PaymentCode::RMinus;
            acts.AddNew();
            acts["num"] = ++lastAct;
            acts["Date"] = date;
            acts["MM"] = day.date.month();
            acts["AA"] = day.date.year();
            acts["date_Presta"] = dice.OneIn(12) ? basic::DateText(day.date.addDays(-dice.Between(1, 15))) : date;
            FillAct(steps[static_cast<std::size_t>(act)], service, settlement);
            acts["Flag_H"] = daysAgo > DaysKeptWhole && !keptVisible ? 1 : 0;
            acts.Update();
            batches.Count();
        }
    }

    void FillAct(int step, int service, int settlement)
    {
        const int code = CodeOf(service, dice);
        const int usual = Services()[static_cast<std::size_t>(service) % Services().size()].code;
        const double amount = AmountOf(settlement, TariffRate(code < 0 ? usual : code), dice);
        acts["HH"] = step / StepsOfHour;
        acts["Heure"] = times[step];
        acts["num_patient"] = dice.OneIn(2500) ? plan.patients + dice.Between(1, 50) : dice.Between(1, plan.patients);
        acts["num_presta"] = dice.OneIn(4000) ? plan.services + 1 : service + 1;
        acts["montant"] = amount;
        acts["Type"] = code < 0 ? store::Value() : store::Value(codes[code]);
        acts["flag_R"] = settlement;
        cash += amount;
    }

    void WriteExpenses(const WorkingDay& day)
    {
        constexpr int keptInTheTill = 20000;
        const int kinds = static_cast<int>(Expenses().size());
        const int firstKind = dice.Below(kinds);
        for (int expense = 0; expense < day.expenses; ++expense) {
            const bool toTheBank = expense == 0 && day.date.dayOfWeek() == Qt::Thursday && cash > 2 * keptInTheTill;
            if (toTheBank) {
                WriteExpense(day.date, "Versement à la banque", std::floor((cash - keptInTheTill) / 1000) * 1000);
                continue;
            }
            constexpr int step = 7; // so that no kind occurs twice on a day
            const ExpenseWords& words = Expenses()[static_cast<std::size_t>((firstKind + step * expense) % kinds)];
            const double amount = dice.Between(words.lowest / 10, words.highest / 10) * 10;
            WriteExpense(day.date, words.object, dice.OneIn(6) ? amount + 0.25 * dice.Between(1, 3) : amount);
        }
    }

    void WriteExpense(const QDate& date, const char* object, double amount)
    {
        expenses.AddNew();
        expenses["num"] = ++lastExpense;
        expenses["Date"] = basic::DateText(date);
        expenses["MM"] = static_cast<double>(date.month());
        expenses["objet"] = object;
        expenses["montant"] = amount;
        expenses.Update();
        batches.Count();
        cash -= amount;
    }

    const DemoPlan& plan;
    Dice& dice;
    RowBatches batches;
    dao::Recordset acts;
    dao::Recordset expenses;
    QStringList times;
    QStringList codes;
    std::vector<int> weights;
    int lastAct = 0;
    int lastExpense = 0;
    double cash = 0;
};

} // namespace

void WriteDays(const dao::Database& database, const DemoPlan& plan, Dice& dice)
{
    DayWriter writer(database, plan, dice);
    for (const WorkingDay& day : plan.days)
        writer.Write(day);
    writer.Finish();
}

void WriteDeletedActs(const dao::Database& database, const DemoPlan& plan, Dice& dice)
{
    std::vector<int> daysAgo; // age of each deletion, oldest first; some are of the last day
    daysAgo.reserve(static_cast<std::size_t>(plan.deletedActs));
    const int span = std::min(365, static_cast<int>(plan.days.front().date.daysTo(plan.until)) + 1);
    for (int act = 0; act < plan.deletedActs; ++act)
        daysAgo.push_back(act < 4 ? 0 : dice.Below(span));
    std::ranges::sort(daysAgo, std::greater());

    RowBatches batches(database, "Actes_suppr", plan.deletedActs);
    dao::Recordset journal = database.OpenRecordset("Actes_suppr");
    int key = 0;
    for (const int ago : daysAgo) {
        const QDate deletion = plan.until.addDays(-ago);
        const int code = CodeOf(dice.Below(plan.services), dice);
        journal.AddNew();
        journal["num"] = ++key;
        journal["Date"] = basic::DateText(deletion.addDays(-dice.Below(12)));
        journal["Heure"] = TimeText(dice.Below(SlotsOfDay * StepsOfHour));
        journal["num_patient"] = dice.Between(1, plan.patients);
        journal["num_presta"] = dice.Between(1, plan.services);
        journal["Type"] = code < 0 ? store::Value() : store::Value(TariffCode(code));
        journal["flag_R"] = dice.Below(6);
        journal["Date_Suppr"] = basic::DateText(deletion);
        journal["H_Suppr"] = TimeText(dice.Below(SlotsOfDay * StepsOfHour));
        journal.Update();
        batches.Count();
    }
    batches.Finish();
}

} // namespace practice
