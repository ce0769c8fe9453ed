#include "data/Practice.h"
#include "practice/Command.h"

namespace practice {
namespace {

constexpr const char* NewNames[] = {"DOSSIER"};
constexpr Option NewOptions[] = {{"code", Option::Takes::OneValue, true},
                                 {"letterhead", Option::Takes::Values, true},
                                 {"language", Option::Takes::OneValue}};
constexpr Option SetOptions[] = {
    {"code", Option::Takes::OneValue}, {"letterhead", Option::Takes::Values}, {"language", Option::Takes::OneValue}};

/// The common options of `new` and `set`.
data::PracticeChange ChangeFrom(const Arguments& arguments)
{
    data::PracticeChange change;
    constexpr int lowest = -32768;
    constexpr int highest = 32766;
    if (const auto code = arguments.Whole("code", lowest, highest))
        change.accessCode = static_cast<int>(*code);
    if (arguments.Has("letterhead"))
        change.letterhead = arguments.Texts("letterhead");
    if (arguments.Has("language")) {
        const QString language = arguments.Text("language");
        if (language != "fr" && language != "ar")
            throw Misuse("valeur incorrecte « " + language + " » pour --language : fr ou ar");
        change.language = language == "ar" ? data::TooltipLanguage::Arabic : data::TooltipLanguage::French;
    }
    return change;
}

int RunNew(const Arguments& arguments, const Streams& streams)
{
    const data::PracticeChange wanted = ChangeFrom(arguments);
    const data::PracticeSetup setup{.accessCode = wanted.accessCode.value_or(0),
                                    .letterhead = wanted.letterhead.value_or(QStringList()),
                                    .language = wanted.language.value_or(data::TooltipLanguage::French)};
    const QString folder = arguments.Name(0);
    data::CreatePractice(folder, setup);
    streams.output << "Cabinet créé : " << folder << "\nCode d'accès : " << setup.accessCode << "\n";
    return Done;
}

int RunSet(const Arguments& arguments, const Streams& streams)
{
    const data::PracticeChange change = ChangeFrom(arguments);
    if (!change.accessCode && !change.letterhead && !change.language)
        throw Misuse("il manque une option : --code, --letterhead ou --language");
    data::ChangePractice(arguments.Name(0), change);
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

const Command SetCommand{
    "set",
    "DOSSIER [--code N] [--letterhead LIGNE...] [--language fr|ar]",
    "      Change le code d'accès, tout l'en-tête ou la langue des bulles ; le reste ne change pas.\n",
    NewNames,
    0,
    SetOptions,
    RunSet,
};

} // namespace practice
