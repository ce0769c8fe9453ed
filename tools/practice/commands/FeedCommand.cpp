#include "data/PaymentCode.h"
#include "platform/basic/Numbers.h"
#include "practice/commands/Command.h"
#include "practice/feed/Feed.h"

namespace practice {
namespace {

constexpr const char* FeedNames[] = {"DOSSIER", "SOURCE"};
constexpr Option FeedOptionList[] = {{"part"}, {"dry-run"}, {"yes"}};
constexpr qsizetype MostNamed = 1000;

/// "2 nouvelles", "1 modifiée"
QString Counted(qint64 count, const QString& what)
{
    return QString("%1 %2%3").arg(count).arg(what, count > 1 ? "s" : "");
}

void PrintTable(const FedTable& table, QTextStream& output)
{
    const FeedCounts& counts = table.counts;
    output << table.name << " : "
           << QStringList{Counted(counts.added, "nouvelle"), Counted(counts.changed, "modifiée"),
                          Counted(counts.unchanged, "inchangée"), Counted(counts.kept, "gardée"),
                          Counted(counts.gone, "supprimée")}
                  .join(", ")
           << ".\n";
}

QString NameOf(const NamedAct& act)
{
    const QString day = act.day.isValid() ? act.day.toString("dd/MM/yyyy") : QString("jour inconnu");
    return QString("acte %1 du %2, %3").arg(act.key).arg(day, act.patient.isEmpty() ? "patient inconnu" : act.patient);
}

QString TextOf(const Settlement& settlement)
{
    return data::PaymentCodes().value(settlement.code, "?").trimmed() + " " +
           QString::number(settlement.amount, 'f', 2);
}

QString WhyKept(GoneAct::Reason reason)
{
    switch (reason) {
    case GoneAct::TooFewLines:
        return "moins de lignes d'Actes_suppr que d'actes semblables";
    case GoneAct::SettledHere:
        return "son règlement a changé ici";
    default:
        return "aucune ligne nouvelle d'Actes_suppr ne le nomme";
    }
}

/// Prints a title and a line for each item, at most a thousand.
template <class Items, class Describe>
void PrintList(const Items& items, const char* title, const Describe& describe, QTextStream& output)
{
    if (!items.empty())
        output << title << "\n";
    const auto count = static_cast<qsizetype>(items.size());
    for (const auto& item : items.first(std::min(count, MostNamed)))
        output << "  " << describe(item) << "\n";
    if (count > MostNamed)
        output << "  ... et " << count - MostNamed << " autres.\n";
}

void PrintReport(const FeedReport& report, QTextStream& output)
{
    for (const QString& table : report.inWindows1252)
        output << table << ".csv n'est pas en UTF-8 : lu en Windows-1252.\n";
    for (const FedTable& table : report.tables)
        PrintTable(table, output);
    if (!report.passedOver.isEmpty())
        output << "Tables passées, elles ne viennent pas de la source : " << report.passedOver.join(", ") << ".\n";
    PrintList(
        report.lostDates,
        "Dates d'avant 1900, qui ne se lisent pas et restent vides :", [](const QString& place) { return place; },
        output);
    PrintList(
        report.disputes, "Règlements changés ici et à la source ; ceux d'ici restent :",
        [](const Dispute& dispute) {
            return NameOf(dispute.act) + " : ici " + TextOf(dispute.ours) + ", à la source " + TextOf(dispute.source);
        },
        output);
    PrintList(
        report.goneActs, "Actes que la source n'a plus ; ils restent :",
        [](const GoneAct& gone) { return NameOf(gone.act) + " : " + WhyKept(gone.reason); }, output);
}

void PrintProblems(const FeedReport& report, QTextStream& errors)
{
    for (const QString& text : report.problems)
        errors << text << "\n";
    if (report.problemCount > report.problems.size())
        errors << "... et " << report.problemCount - report.problems.size() << " autres.\n";
    errors << QString("Source refusée : %1, rien n'a été modifié.\n").arg(Counted(report.problemCount, "problème"));
}

int RunFeed(const Arguments& arguments, const Streams& streams)
{
    const FeedOptions options{
        .isPart = arguments.Has("part"), .isTrial = arguments.Has("dry-run"), .takesLosses = arguments.Has("yes")};
    const FeedReport report = Feed(arguments.Name(0), options).Run(arguments.Name(1));
    if (report.problemCount > 0) {
        PrintProblems(report, streams.errors);
        return Misused;
    }
    PrintReport(report, streams.output);
    if (report.isUnchanged)
        streams.output << "Rien de nouveau : rien n'a été modifié.\n";
    else if (options.isTrial)
        streams.output << "Essai : rien n'a été modifié.\n";
    return report.disputes.empty() ? Done : Refused;
}

} // namespace

const Command FeedCommand{
    "feed",
    "DOSSIER SOURCE [--part] [--dry-run] [--yes]",
    "      Reprend ce que l'autre programme tient : Patients, Actes, Plani et Actes_suppr. SOURCE est une ancienne\n"
    "      base (.MDB), un dossier de fichiers TABLE.csv ou un seul. Les lignes nouvelles sont ajoutées, les autres\n"
    "      prennent les valeurs de la source, sauf les règlements faits ici. Un acte que la source n'a plus n'est\n"
    "      supprimé que si Actes_suppr le nomme. --part reprend un extrait et ne supprime rien ; --dry-run dit tout\n"
    "      et n'écrit rien ; --yes prend une source à laquelle il manque plus d'un dixième des actes.\n"
    "      Code de retour : 0, 1 si un règlement a changé des deux côtés, 2 si rien n'a été fait.\n",
    FeedNames,
    0,
    FeedOptionList,
    RunFeed,
    Misused,
};

} // namespace practice
