#include "practice/commands/Command.h"
#include "practice/commands/SettingOptions.h"

namespace practice {
namespace {

constexpr const char* NewNames[] = {"DOSSIER"};
constexpr Option NewOptions[] = {{"code", Option::Takes::OneValue, true},
                                 {"letterhead", Option::Takes::Values, true},
                                 {"language", Option::Takes::OneValue}};

int RunNew(const Arguments& arguments, const Streams& streams)
{
    const data::PracticeChange wanted = SettingsFrom(arguments);
    const data::PracticeSetup setup{.accessCode = wanted.accessCode.value_or(0),
                                    .letterhead = wanted.letterhead.value_or(QStringList()),
                                    .language = wanted.language.value_or(data::TooltipLanguage::French)};
    const QString folder = arguments.Name(0);
    data::CreatePractice(folder, setup);
    streams.output << "Cabinet créé : " << folder << "\nCode d'accès : " << setup.accessCode << "\n";
    return Done;
}

} // namespace

const Command NewCommand{
    "new",
    "DOSSIER --code N --letterhead LIGNE... [--language fr|ar]",
    "      Crée un cabinet vide. N est le code d'accès à saisir : un nombre pair de -32768 à 32766.\n"
    "      Jusqu'à 16 lignes d'en-tête ; les quatre premières ont au plus 40, 30, 20 et 20 caractères.\n",
    NewNames,
    0,
    NewOptions,
    RunNew,
};

} // namespace practice
