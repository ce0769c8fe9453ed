#include "practice/commands/Command.h"
#include "practice/copies/CashDays.h"
#include "practice/copies/CopyChoice.h"
#include "practice/copies/RowTexts.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "platform/store/FileState.h"

#include <tuple>

namespace practice {
namespace {

constexpr const char* RestoreNames[] = {"DOSSIER", "COPIE"};
constexpr Option RestoreOptions[] = {{"yes"}};

QString LossText(const TableChanges& table)
{
    const std::tuple<RowChange::Kind, const char*, const char*> words[] = {
        {RowChange::Kind::Added, "ligne perdue", "lignes perdues"},
        {RowChange::Kind::Changed, "remise à son état d'avant", "remises à leur état d'avant"},
        {RowChange::Kind::Gone, "retrouvée", "retrouvées"}};
    QStringList texts;
    for (const auto& [kind, one, several] : words)
        if (const int count = table.Count(kind); count > 0)
            texts << QString("%1 %2").arg(count).arg(QString::fromUtf8(count > 1 ? several : one));
    return texts.join(", ");
}

/// Shows which rows the copy brings back and which ones are lost with the current file.
void ShowLoss(const store::DatabaseReader& copy, const store::DatabaseReader& present, QTextStream& output)
{
    output << "Dernier acte de la copie : " << LastActText(copy) << "\nDernier acte actuel : " << LastActText(present)
           << "\n";
    bool isSame = true;
    for (const TableChanges& table : DifferencesOf(copy, present)) {
        if (table.rows.isEmpty())
            continue;
        isSame = false;
        output << "  " << table.table << " : " << LossText(table) << "\n";
    }
    if (isSame)
        output << "La copie et le cabinet contiennent les mêmes lignes.\n";
}

void ShowPlan(const archives::ArchivedCopy& copy, const QString& database, QTextStream& output)
{
    output << "Copie : " << copy.Name() << " du " << archives::MomentOf(copy) << "\n" << WarningOf(copy);
    const store::DatabaseReader reader(copy.path);
    try {
        ShowLoss(reader, store::DatabaseReader(database), output);
    } catch (const basic::RuntimeError& error) {
        output << "Dernier acte de la copie : " << LastActText(reader)
               << "\nLe fichier actuel ne peut pas être lu : " << error.Description() << "\n";
    }
}

bool IsConfirmed(const Streams& streams, const char* question)
{
    streams.output << question << " (oui/non) ";
    streams.output.flush();
    return streams.input.readLine().trimmed().compare("oui", Qt::CaseInsensitive) == 0;
}

int RunRestore(const Arguments& arguments, const Streams& streams)
{
    const QString folder = arguments.Name(0);
    RequirePractice(folder);
    const archives::ArchivedCopy copy = ChosenCopy(folder, arguments.Name(1));
    archives::RequireClosed(folder);
    archives::RemoveLeftovers(folder);
    ShowPlan(copy, host::PathIn(folder, data::DatabaseFile), streams.output);
    const bool isAgreed =
        (arguments.Has("yes") ||
         IsConfirmed(streams, "Remettre cette copie en place du fichier actuel, qui sera gardé ?")) &&
        (WarningOf(copy).isEmpty() ||
         IsConfirmed(streams, "Cette copie a été modifiée depuis sa clôture. La remettre quand même ?"));
    if (!isAgreed) {
        streams.output << "Rien n'a été changé.\n";
        return Refused;
    }
    const QString kept = archives::Restore(copy.path, folder, archives::Accepts::ChangedCopies);
    streams.output << "La copie du " << archives::MomentOf(copy) << " est en place.\n";
    if (!kept.isEmpty())
        streams.output << "Le fichier d'avant est gardé : " << kept << "\n";
    return Done;
}

} // namespace

const Command RestoreCommand{
    "restore",
    "DOSSIER [COPIE] [--yes]",
    "      Remet une copie en place de la base du cabinet : un chemin, un nom dans ARCHIVES ou un jour\n"
    "      (2026-11-23) ; sans elle, la dernière copie entière. Montre ce qui reviendrait et ce qui serait perdu,\n"
    "      puis demande ; --yes répond oui, sauf pour une copie modifiée depuis sa clôture. Le fichier actuel est "
    "gardé dans ARCHIVES. Code de retour : 0 si la\n"
    "      copie est en place, 1 si la réponse n'est pas oui, 2 si ce n'est pas possible ; rien ne change alors.\n",
    RestoreNames,
    1,
    RestoreOptions,
    RunRestore,
    Misused,
};

} // namespace practice
