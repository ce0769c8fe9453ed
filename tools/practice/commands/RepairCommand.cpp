#include "platform/basic/RuntimeError.h"
#include "platform/host/Host.h"
#include "practice/check/Check.h"
#include "practice/check/Repair.h"
#include "practice/commands/Command.h"

namespace practice {
namespace {

constexpr const char* RepairNames[] = {"DOSSIER"};

QString TextOf(const RepairReport& report)
{
    QString text;
    if (!report.copy.isEmpty())
        text += "  Copie de sécurité : " + report.copy + "\n";
    for (const QString& change : report.changes)
        text += "  Réparé : " + change + "\n";
    for (const QString& doubt : report.doubts)
        text += "  À vérifier : " + doubt + "\n";
    for (const QString& lost : report.lost)
        text += "  Perdu : " + lost + "\n";
    if (!report.refusal.isEmpty())
        text += "  Rien n'a été modifié : " + report.refusal + "\n";
    return text;
}

int RunRepair(const Arguments& arguments, const Streams& streams)
{
    const QString folder = arguments.Name(0);
    bool losesRows = false;
    try {
        const QDateTime now(host::Today(), QTime::currentTime());
        const RepairReport report = RepairPractice(folder, now);
        losesRows = !report.lost.isEmpty();
        streams.output << TextOf(report);
    } catch (const basic::RuntimeError& error) {
        if (error.Code() != basic::Error::DamagedDatabase)
            throw;
        streams.output << "  Rien n'a été modifié : " << error.Description() << "\n";
    }
    const CheckReport left = CheckPractice(folder);
    streams.output << left.Text();
    return left.failures.isEmpty() && !losesRows ? Done : Refused;
}

} // namespace

const Command RepairCommand{
    "repair",
    "DOSSIER",
    "      Répare ce qui peut l'être avec certitude, après une copie dans ARCHIVES : les index, MM et AA d'après la\n"
    "      date, les dates jj/mm/aaaa. Une base dont des pages sont détruites est refaite avec toutes les lignes\n"
    "      lisibles, en disant celles qui manquent. Le programme doit être fermé. Dit ensuite ce que dit check.\n",
    RepairNames,
    0,
    {},
    RunRepair,
};

} // namespace practice
