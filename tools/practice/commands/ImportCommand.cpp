#include "platform/basic/RuntimeError.h"
#include "practice/commands/Command.h"
#include "practice/fields/FieldRules.h"
#include "practice/import/Import.h"

#include <QFileInfo>

namespace practice {
namespace {

constexpr const char* ImportNames[] = {"DOSSIER", "TABLE ou DOSSIER_CSV", "FICHIER"};
constexpr Option ImportOptions[] = {{"update"}, {"dry-run"}};

/// "1 ligne ajoutée", "2 lignes ajoutées"
QString RowsThatAre(int count, const QString& what)
{
    const QString s = count > 1 ? "s" : "";
    return QString("%1 ligne%2 %3").arg(count).arg(s, QString(what).replace("(s)", s));
}

/// The numbers of rows; a trial uses the future tense.
QString Describe(const ImportCounts& counts, bool isTrial)
{
    QStringList parts;
    if (counts.added > 0)
        parts << RowsThatAre(counts.added, isTrial ? "à ajouter" : "ajoutée(s)");
    if (counts.changed > 0)
        parts << RowsThatAre(counts.changed, isTrial ? "à modifier" : "modifiée(s)");
    if (counts.same > 0)
        parts << RowsThatAre(counts.same, "déjà là");
    if (counts.left > 0)
        parts << RowsThatAre(counts.left, "laissée(s) telle(s) quelle(s)");
    return parts.isEmpty() ? "aucune ligne" : parts.join(", ");
}

void PrintFile(const ImportedFile& file, bool isTrial, QTextStream& output)
{
    const ImportCounts& counts = file.target->Counts();
    output << file.table << " : " << Describe(counts, isTrial);
    if (counts.left > 0)
        output << ", le fichier a d'autres valeurs (" << counts.leftFields.join(", ") << ") : --update les prend";
    output << ".\n";
}

void PrintResult(const Import& import, bool isTrial, QTextStream& output)
{
    for (const ImportedFile& file : import.Files())
        PrintFile(file, isTrial, output);
    if (!import.PassedOver().isEmpty())
        output << "Sans importance, le programme remplit ces tables lui-même : " << import.PassedOver().join(", ")
               << ".\n";
    const ImportCounts sum = import.Sum();
    if (sum.added + sum.changed == 0)
        output << "Rien à importer : rien n'a été modifié.\n";
    else if (isTrial)
        output << "Essai : rien n'a été modifié.\n";
    else if (import.Files().size() > 1)
        output << "En tout : " << Describe(sum, isTrial) << ".\n";
}

void PrintProblems(const Import& import, QTextStream& errors)
{
    const QStringList texts = import.ProblemTexts();
    for (const QString& text : texts)
        errors << text << "\n";
    const int count = import.ProblemCount();
    if (count > texts.size())
        errors << "... et " << count - texts.size() << " autres.\n";
    errors << QString("Import refusé : %1 problème%2, rien n'a été modifié.\n").arg(count).arg(count > 1 ? "s" : "");
}

void ReadFiles(const Arguments& arguments, Import& import)
{
    const QString what = arguments.Name(1);
    if (!arguments.Name(2).isEmpty())
        import.Read(what, arguments.Name(2));
    else
        import.ReadFolder(what);
}

int RunImport(const Arguments& arguments, const Streams& streams)
{
    const bool isTrial = arguments.Has("dry-run");
    const QString what = arguments.Name(1);
    if (arguments.Name(2).isEmpty() && FindImportTable(what) != nullptr && !QFileInfo(what).isDir())
        throw Misuse("il manque FICHIER");
    Import import(arguments.Name(0), arguments.Has("update"));
    ReadFiles(arguments, import);
    if (!isTrial)
        import.Write();
    for (const ImportedFile& file : import.Files()) {
        if (file.encoding == CsvEncoding::Windows1252)
            streams.output << file.name << " n'est pas en UTF-8 : lu en Windows-1252.\n";
    }
    if (import.ProblemCount() > 0) {
        PrintProblems(import, streams.errors);
        return Refused;
    }
    PrintResult(import, isTrial, streams.output);
    return Done;
}

} // namespace

const Command ImportCommand{
    "import",
    "DOSSIER TABLE FICHIER.csv [--update] [--dry-run]\n"
    "  practice import DOSSIER DOSSIER_CSV [--update] [--dry-run]",
    "      Ajoute les lignes d'un fichier à une table, ou celles de chaque TABLE.csv d'un dossier : toutes ou\n"
    "      aucune. Une ligne déjà là avec les mêmes valeurs est passée ; avec d'autres, c'est une erreur, sauf\n"
    "      avec --update, qui prend celles du fichier. --dry-run contrôle tout et n'écrit rien.\n"
    "      La première ligne nomme les champs (practice fields les donne) ; point-virgule, virgule ou\n"
    "      tabulation, UTF-8 ou Windows-1252, dates jj/mm/aaaa ou aaaa-mm-jj, une valeur vide est Null.\n",
    ImportNames,
    1,
    ImportOptions,
    RunImport,
};

} // namespace practice
