#include "practice/adopt/Adoption.h"
#include "practice/commands/Command.h"

namespace practice {
namespace {

constexpr const char* AdoptNames[] = {"ANCIEN_DOSSIER", "NOUVEAU_DOSSIER"};

/// "1 ligne reprise", "2 lignes reprises, 1 laissée"
QString Describe(const AdoptedTable& table)
{
    const auto s = [](qint64 count) { return count > 1 ? "s" : ""; };
    QString text = QString("%1 ligne%2 reprise%2").arg(table.taken).arg(s(table.taken));
    if (table.leftOut > 0)
        text += QString(", %1 laissée%2").arg(table.leftOut).arg(s(table.leftOut));
    return text;
}

void PrintLosses(const AdoptedTable& table, QTextStream& output)
{
    for (const QString& loss : table.losses)
        output << loss << "\n";
    if (table.unlisted > 0)
        output << table.name << " : ... et " << table.unlisted << " autres.\n";
}

int RunAdopt(const Arguments& arguments, const Streams& streams)
{
    const QString folder = arguments.Name(1);
    const AdoptionReport report = Adopt(arguments.Name(0), folder);
    for (const AdoptedTable& table : report.tables)
        PrintLosses(table, streams.output);
    for (const AdoptedTable& table : report.tables)
        streams.output << table.name << " : " << Describe(table) << ".\n";
    if (!report.otherTables.isEmpty())
        streams.output << "Ces tables ne sont pas du programme : " << report.otherTables.join(", ") << ".\n";
    if (report.hasOldTemplates)
        streams.output
            << "Les anciens modèles d'états ne sont pas de ce format : ceux du programme sont mis en place.\n";
    streams.output << report.check.Text() << "Cabinet créé : " << folder << "\n";
    return report.IsWhole() ? Done : Refused;
}

} // namespace

const Command AdoptCommand{
    "adopt",
    "ANCIEN_DOSSIER NOUVEAU_DOSSIER",
    "      Crée un cabinet à partir d'un ancien : sa base de l'ancien format (lue avec le paquet mdbtools), en-tête,\n"
    "      code d'accès et langue. L'ancien dossier ne change pas ; le nouveau doit être vide ou absent. Ce qui n'a\n"
    "      pas pu être repris est dit ligne par ligne. Rend 0 si tout est repris, 1 sinon, 2 si rien n'est fait.\n",
    AdoptNames,
    0,
    {},
    RunAdopt,
    Misused,
};

} // namespace practice
