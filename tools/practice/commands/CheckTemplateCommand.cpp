#include "practice/commands/Command.h"
#include "practice/templates/TemplateCheck.h"

namespace practice {
namespace {

constexpr const char* CheckTemplateNames[] = {"FICHIER"};

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
