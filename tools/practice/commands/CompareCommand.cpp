#include "practice/commands/Command.h"
#include "practice/commands/OutputOption.h"
#include "practice/copies/CashDays.h"
#include "practice/copies/ChangesFile.h"
#include "practice/copies/CopyChoice.h"
#include "practice/copies/RowTexts.h"

#include "data/Practice.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"

namespace practice {
namespace {

constexpr const char* CompareNames[] = {"DOSSIER", "COPIE"};
constexpr Option CompareOptions[] = {{"rows"}, {"csv", Option::Takes::OneValue}, {"force"}};

void ShowDays(const QList<DifferingDay>& days, const QDate& end, QTextStream& output)
{
    if (days.isEmpty()) {
        output << "Aucun jour avant le " << end.toString("dd/MM/yyyy")
               << " n'a changé : les soldes sont ceux de la copie.\n";
        return;
    }
    output << "Jours dont la caisse a changé :\n";
    for (const DifferingDay& day : days) {
        output << "  " << DayText(day.day) << " : solde du soir " << AmountText(day.before) << " -> "
               << AmountText(day.after) << "\n";
        for (const QString& reason : day.reasons)
            output << "    " << reason << "\n";
    }
}

QString RowText(const RowChange& row)
{
    QStringList texts;
    for (const FieldChange& change : row.fields) {
        const QString before = FieldText(change.field, change.before);
        const QString after = FieldText(change.field, change.after);
        if (row.kind == RowChange::Kind::Changed)
            texts << QString("%1 : %2 -> %3").arg(FieldTitle(change.field), before, after);
        else if (const QString& only = row.kind == RowChange::Kind::Added ? after : before; only != "vide")
            texts << QString("%1 : %2").arg(FieldTitle(change.field), only);
    }
    return texts.join(", ");
}

void ShowTables(const QList<TableChanges>& changes, bool withRows, QTextStream& output)
{
    output << "Lignes :\n";
    for (const TableChanges& table : changes) {
        output << "  " << table.table << " : " << CountsText(table) << "\n";
        for (const RowChange& row : withRows ? table.rows : QList<RowChange>())
            output << "    " << table.table << " " << row.key << " " << KindText(row.kind) << " : " << RowText(row)
                   << "\n";
    }
}

int RunCompare(const Arguments& arguments, const Streams& streams)
{
    const QString folder = arguments.Name(0);
    RequirePractice(folder);
    const std::unique_ptr<OutputFile> csv = OutputOf(arguments, "csv", OutputKind::Csv);
    const archives::ArchivedCopy copy = ChosenCopy(folder, arguments.Name(1), host::Today());
    const store::DatabaseReader before(copy.path);
    const store::DatabaseReader after(host::PathIn(folder, data::DatabaseFile));
    const QList<TableChanges> changes = DifferencesOf(before, after);
    const QList<DifferingDay> days = DifferingDays(before, after, changes, copy.Day());
    if (csv != nullptr) {
        WriteChanges(changes, csv->Device());
        csv->Complete();
    }
    QTextStream& output = csv != nullptr && csv->IsStandardOutput() ? streams.errors : streams.output;
    output << WarningOf(copy) << "Comparé à la copie « " << copy.Name() << " » du " << archives::MomentOf(copy)
           << ".\n";
    ShowDays(days, copy.Day(), output);
    ShowTables(changes, arguments.Has("rows"), output);
    return days.isEmpty() ? Done : Refused;
}

} // namespace

const Command CompareCommand{
    "compare",
    "DOSSIER [COPIE] [--rows] [--csv FICHIER [--force]]",
    "      Compare le cabinet à une copie : un chemin, un nom dans ARCHIVES ou un jour (2026-11-23) ; sans elle,\n"
    "      la dernière copie entière d'un jour passé. D'abord les jours passés dont la caisse a changé, avec ce\n"
    "      qui l'explique, puis le nombre de lignes ajoutées, modifiées, disparues. --rows les donne toutes,\n"
    "      --csv les écrit pour un tableur ; --force remplace un CSV qui existe. Code de retour : 0 si aucun jour\n"
    "      passé n'a changé, 1 sinon, 2 en cas d'ennui. Ne modifie rien dans le cabinet.\n",
    CompareNames,
    1,
    CompareOptions,
    RunCompare,
    Misused,
};

} // namespace practice
