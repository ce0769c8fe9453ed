#include "practice/commands/Command.h"
#include "practice/fields/FieldRules.h"

namespace practice {
namespace {

const char* MissingText(Missing missing)
{
    switch (missing) {
    case Missing::Fault:
        return ", obligatoire";
    case Missing::Remark:
        return ", recommandé";
    case Missing::Fine:
        break;
    }
    return "";
}

int RunFields(const Arguments&, const Streams& streams)
{
    for (const TableRule& table : ImportTables()) {
        streams.output << table.name << (table.hasOneRow ? " (une seule ligne)\n" : "\n");
        for (const FieldRule& field : table.fields)
            streams.output << "  " << QString(field.name).leftJustified(12) << " " << DescribeField(field)
                           << MissingText(field.missing) << "\n";
    }
    return Done;
}

} // namespace

const Command FieldsCommand{
    "fields", "",        "      Donne les tables à importer, leurs champs et ce que chacun peut contenir.\n", {}, 0,
    {},       RunFields,
};

} // namespace practice
