#include "practice/check/Check.h"

#include "practice/commands/Command.h"

namespace practice {
namespace {

constexpr const char* CheckNames[] = {"DOSSIER|FICHIER"};

int RunCheck(const Arguments& arguments, const Streams& streams)
{
    const CheckReport report = CheckPractice(arguments.Name(0));
    streams.output << report.Text();
    return report.failures.isEmpty() ? Done : Refused;
}

} // namespace

const Command CheckCommand{
    "check",
    "DOSSIER|FICHIER",
    "      Contrôle les fichiers, la base de données et chacune de ses lignes, ou un fichier seul : une copie\n"
    "      d'ARCHIVES par exemple. Ne modifie rien.\n",
    CheckNames,
    0,
    {},
    RunCheck,
};

} // namespace practice
