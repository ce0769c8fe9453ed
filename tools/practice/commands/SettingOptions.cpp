#include "practice/commands/SettingOptions.h"

namespace practice {

data::PracticeChange SettingsFrom(const Arguments& arguments)
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

} // namespace practice
