#include "practice/commands/Command.h"
#include "practice/demo/Demo.h"
#include "practice/fields/FieldValues.h"

#include <limits>

namespace practice {
namespace {

constexpr const char* DemoNames[] = {"DOSSIER"};
constexpr Option DemoOptionList[] = {
    {"acts", Option::Takes::OneValue},     {"seed", Option::Takes::OneValue},     {"until", Option::Takes::OneValue},
    {"patients", Option::Takes::OneValue}, {"services", Option::Takes::OneValue}, {"days", Option::Takes::OneValue},
    {"expenses", Option::Takes::OneValue},
};

std::optional<int> Number(const Arguments& arguments, const char* option, int lowest, int highest)
{
    const auto number = arguments.Whole(option, lowest, highest);
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

int RunDemo(const Arguments& arguments, const Streams& streams)
{
    DemoOptions options;
    options.acts = Number(arguments, "acts", 1, 20'000'000);
    options.patients = Number(arguments, "patients", 1, 1'000'000);
    options.services = Number(arguments, "services", 1, 1000);
    options.days = Number(arguments, "days", 1, 20'000);
    options.expenses = Number(arguments, "expenses", 0, 10'000'000);
    if (const auto seed = arguments.Whole("seed", 0, std::numeric_limits<qint64>::max()))
        options.seed = static_cast<quint64>(*seed);
    if (arguments.Has("until")) {
        const QString text = arguments.Text("until");
        options.until = DayOf(text);
        if (!options.until.isValid())
            throw Misuse("valeur incorrecte « " + text + " » pour --until : un jour du calendrier, jj/mm/aaaa");
    }
    const QString folder = arguments.Name(0);
    MakeDemo(folder, options);
    streams.output << "Cabinet de démonstration : " << folder << "\nCode d'accès : " << DemoAccessCode << "\n";
    return Done;
}

} // namespace

const Command DemoCommand{
    "demo",
    "DOSSIER [--acts N] [--seed N] [--until DATE]\n"
    "                        [--patients N] [--services N] [--days N] [--expenses N]",
    "      Crée un cabinet de démonstration dont DATE (aujourd'hui sinon) est le dernier jour.\n"
    "      Les mêmes options donnent toujours les mêmes données.\n",
    DemoNames,
    0,
    DemoOptionList,
    RunDemo,
};

} // namespace practice
