#include "practice/Check.h"

#include "practice/Command.h"
#include "practice/TemplateCheck.h"

namespace practice {
namespace {

constexpr const char* checkNames[] = {"DOSSIER"};
constexpr const char* checkTemplateNames[] = {"FICHIER"};

int RunCheck(const Arguments& arguments, const Streams& streams)
{
    const CheckReport report = CheckPractice(arguments.Name(0));
    for (const QString& fact : report.facts)
        streams.output << "  " << fact << "\n";
    for (const QString& remark : report.remarks)
        streams.output << "  Remarque : " << remark << "\n";
    for (const QString& failure : report.failures)
        streams.output << "  ERREUR : " << failure << "\n";
    streams.output << (report.failures.isEmpty() ? "Le cabinet est en ordre.\n" : "Le cabinet n'est pas en ordre.\n");
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

const Command checkCommand{
    "check",    "DOSSIER", "      Contrôle les fichiers, la base de données, les codes et les clés. Ne modifie rien.\n",
    checkNames, 0,         {},
    RunCheck,
};

const Command checkTemplateCommand{
    "check-template",
    "FICHIER.RPT",
    "      Contrôle un modèle d'état : chaque erreur avec sa ligne. Ne modifie rien.\n",
    checkTemplateNames,
    0,
    {},
    RunCheckTemplate,
};

} // namespace practice
