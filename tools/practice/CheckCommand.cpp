#include "practice/Check.h"

#include "practice/Command.h"
#include "practice/TemplateCheck.h"

namespace practice {
namespace {

constexpr const char* CheckNames[] = {"DOSSIER|FICHIER"};
constexpr const char* CheckTemplateNames[] = {"FICHIER"};

int RunCheck(const Arguments& arguments, const Streams& streams)
{
    const CheckReport report = CheckPractice(arguments.Name(0));
    streams.output << report.Text();
    return report.failures.isEmpty() ? Done : Refused;
}

int RunCheckTemplate(const Arguments& arguments, const Streams& streams)
{
    const QStringList mistakes = CheckReportTemplate(arguments.Name(0));
    for (const QString& mistake : mistakes)
        streams.output << mistake << "\n";
    if (mistakes.isEmpty())
        streams.output << "Le modèle est en ordre.\n";
    return mistakes.isEmpty() ? Done : Refused;
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

const Command CheckTemplateCommand{
    "check-template",
    "FICHIER.RPT",
    "      Contrôle un modèle d'état : chaque erreur avec sa ligne. Ne modifie rien.\n",
    CheckTemplateNames,
    0,
    {},
    RunCheckTemplate,
};

} // namespace practice
