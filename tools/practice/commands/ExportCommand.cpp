#include "data/Practice.h"
#include "platform/host/Files.h"
#include "practice/commands/Command.h"
#include "practice/copies/CopyChoice.h"
#include "practice/export/Export.h"

#include <algorithm>

namespace practice {
namespace {

constexpr const char* ExportNames[] = {"DOSSIER", "DOSSIER_CSV", "TABLE", "TABLE", "TABLE",
                                       "TABLE",   "TABLE",       "TABLE", "TABLE", "TABLE"};
constexpr int FirstTable = 2;
constexpr Option ExportOptions[] = {{"force"}};

/// The tables that are named; all if none is.
std::vector<const TableRule*> WantedTables(const Arguments& arguments)
{
    std::vector<const TableRule*> tables;
    for (int position = FirstTable; !arguments.Name(position).isEmpty(); ++position) {
        const TableRule* const table = FindImportTable(arguments.Name(position));
        if (table == nullptr)
            throw Misuse(
                QString("« %1 » n'est pas une table. Tables : %2").arg(arguments.Name(position), ImportTableNames()));
        if (std::ranges::find(tables, table) == tables.end())
            tables.push_back(table);
    }
    if (tables.empty()) {
        for (const TableRule& table : ImportTables())
            tables.push_back(&table);
    }
    return tables;
}

int RunExport(const Arguments& arguments, const Streams& streams)
{
    using enum OutputFile::Existing;
    const std::vector<const TableRule*> tables = WantedTables(arguments);
    const QString folder = arguments.Name(0);
    RequirePractice(folder);
    const store::DatabaseReader practice(host::PathIn(folder, data::DatabaseFile));
    for (const auto& [table, rows] :
         ExportTables(practice, tables, arguments.Name(1), arguments.Has("force") ? Replace : Refuse))
        streams.output << table->name << ".csv : " << rows << " ligne" << (rows > 1 ? "s" : "") << ".\n";
    return Done;
}

} // namespace

const Command ExportCommand{
    "export",
    "DOSSIER DOSSIER_CSV [TABLE...] [--force]",
    "      Écrit chaque table, ou celles qui sont nommées, dans DOSSIER_CSV, en un fichier TABLE.csv que import\n"
    "      reprend : UTF-8, points-virgules, dates jj/mm/aaaa, une valeur absente est vide. Tout est du même moment,\n"
    "      aussi quand le programme est ouvert. --force remplace les CSV qui existent.\n",
    ExportNames,
    static_cast<int>(std::size(ExportNames)) - FirstTable,
    ExportOptions,
    RunExport,
};

} // namespace practice
