#include "practice/commands/Command.h"
#include "practice/commands/SettingOptions.h"

#include "archives/Archives.h"

namespace practice {
namespace {

constexpr const char* SetNames[] = {"DOSSIER"};
constexpr Option SetOptions[] = {
    {"code", Option::Takes::OneValue}, {"letterhead", Option::Takes::Values}, {"language", Option::Takes::OneValue}};

int RunSet(const Arguments& arguments, const Streams& streams)
{
    const data::PracticeChange change = SettingsFrom(arguments);
    if (!change.accessCode && !change.letterhead && !change.language)
        throw Misuse("il manque une option : --code, --letterhead ou --language");
    data::ChangePractice(arguments.Name(0), change);
    archives::RemoveLeftovers(arguments.Name(0));
    if (change.accessCode)
        streams.output << "Code d'accès : " << *change.accessCode << "\n";
    if (change.letterhead)
        streams.output << "En-tête : " << change.letterhead->join(" / ") << "\n";
    if (change.language)
        streams.output << "Langue des bulles : "
                       << (*change.language == data::TooltipLanguage::Arabic ? "arabe" : "français") << "\n";
    return Done;
}

} // namespace

const Command SetCommand{
    "set",
    "DOSSIER [--code N] [--letterhead LIGNE...] [--language fr|ar]",
    "      Change le code d'accès, tout l'en-tête ou la langue des bulles ; le reste ne change pas.\n",
    SetNames,
    0,
    SetOptions,
    RunSet,
};

} // namespace practice
