#include "practice/Command.h"
#include "practice/FieldRules.h"
#include "practice/Import.h"

namespace practice {
namespace {

constexpr const char* importNames[] = {"DOSSIER", "TABLE", "FICHIER"};

int RunImport(const Arguments& arguments, const Streams& streams)
{
    const QString table = arguments.Name(1);
    const ImportResult result = ImportCsv(arguments.Name(0), table, arguments.Name(2));
    if (result.problems.isEmpty()) {
        streams.output << result.added << " ligne(s) ajoutée(s) à " << table << ".\n";
        return Done;
    }
    for (const QString& problem : result.problems)
        streams.errors << problem << "\n";
    streams.errors << "Import refusé : " << result.problems.size() << " problème(s), rien n'a été ajouté.\n";
    return Refused;
}

int RunFields(const Arguments&, const Streams& streams)
{
    for (const TableRule& table : ImportTables()) {
        streams.output << table.name << "\n";
        for (const FieldRule& field : table.fields)
            streams.output << "  " << QString(field.name).leftJustified(12) << " " << DescribeField(field)
                           << (field.required ? ", obligatoire" : "") << "\n";
    }
    return Done;
}

} // namespace

const Command importCommand{
    "import",
    "DOSSIER TABLE FICHIER.csv",
    "      Ajoute des lignes à Patients, Actes, Plani ou Actes_suppr : toutes ou aucune.\n"
    "      La première ligne nomme les champs (practice fields les donne) ; virgule ou point-virgule,\n"
    "      UTF-8, dates jj/mm/aaaa ou aaaa-mm-jj, une valeur vide est Null.\n",
    importNames,
    0,
    {},
    RunImport,
};

const Command fieldsCommand{
    "fields", "",        "      Donne les tables à importer, leurs champs et ce que chacun peut contenir.\n", {}, 0,
    {},       RunFields,
};

} // namespace practice
