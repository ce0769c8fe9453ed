#include "practice/commands/Arguments.h"

#include <QCommandLineParser>
#include <algorithm>

namespace practice {
namespace {

QString Dashed(const QString& option)
{
    return "--" + option;
}

/// The parser supports one value per option: "--letterhead A B" becomes "--letterhead A --letterhead B".
QStringList OneValueEach(const QStringList& words, std::span<const Option> options)
{
    QStringList expanded{"practice"};
    QString repeated;
    bool hasValue = false;
    for (const QString& word : words) {
        const bool isOption = word.startsWith("--");
        if (!repeated.isEmpty() && hasValue && !isOption)
            expanded << repeated;
        if (isOption) {
            const auto takesMany = [&word](const Option& option) {
                return option.takes == Option::Takes::Values && word == Dashed(option.name);
            };
            repeated = std::ranges::any_of(options, takesMany) ? word : QString();
        }
        hasValue = !isOption;
        expanded << word;
    }
    return expanded;
}

/// An option's name instead of a value means that the value is missing; a value that starts with dashes is written
/// "--NAME=VALUE".
void RequireValues(const QStringList& words, std::span<const Option> options)
{
    for (const Option& option : options) {
        const qsizetype at = words.indexOf(Dashed(option.name));
        if (option.takes != Option::Takes::Nothing && at >= 0 && words.value(at + 1).startsWith("--"))
            throw Misuse("il manque une valeur après " + words[at]);
    }
}

/// Why the parser refused the arguments, in French: a missing last value, a value for an option without one, or an
/// unknown option.
QString ReasonOfRefusal(const QCommandLineParser& parser, const QStringList& words)
{
    if (const QStringList unknown = parser.unknownOptionNames(); !unknown.isEmpty()) {
        const QString& name = unknown.first();
        return QString("option inconnue : %1%2").arg(words.contains("-" + name) ? "-" : "--", name);
    }
    for (const QString& word : words)
        if (const QString name = word.section('=', 0, 0); word.startsWith("--") && word.contains('=') &&
                                                          parser.isSet(name.mid(2)) &&
                                                          parser.value(name.mid(2)).isEmpty())
            return "l'option " + name + " ne prend pas de valeur";
    return "il manque une valeur après " + words.last();
}

void RequireNames(const QStringList& given, std::span<const char* const> names, int optionalNames)
{
    const auto count = static_cast<qsizetype>(names.size());
    if (given.size() > count)
        throw Misuse("argument en trop : « " + given[count] + " »");
    if (given.size() < count - optionalNames)
        throw Misuse(QString("il manque ") + names[static_cast<std::size_t>(given.size())]);
    for (qsizetype position = 0; position < given.size(); ++position)
        if (given[position].trimmed().isEmpty())
            throw Misuse(QString("%1 est vide").arg(names[static_cast<std::size_t>(position)]));
}

} // namespace

Arguments::Arguments(const QStringList& words, std::span<const char* const> names, int optionalNames,
                     std::span<const Option> options)
{
    RequireValues(words, options);
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    for (const Option& option : options) {
        QCommandLineOption known{QString(option.name)};
        if (option.takes != Option::Takes::Nothing)
            known.setValueName("VALEUR");
        parser.addOption(known);
    }
    if (!parser.parse(OneValueEach(words, options)))
        throw Misuse(ReasonOfRefusal(parser, words));

    given = parser.positionalArguments();
    RequireNames(given, names, optionalNames);
    for (const Option& option : options) {
        const QString name = option.name;
        const QStringList texts = option.takes == Option::Takes::Nothing ? QStringList() : parser.values(name);
        if (option.takes == Option::Takes::OneValue && texts.size() > 1)
            throw Misuse("l'option " + Dashed(name) + " est donnée deux fois");
        if (option.required && !parser.isSet(name))
            throw Misuse("il manque l'option " + Dashed(name));
        if (option.takes == Option::Takes::Nothing && parser.isSet(name))
            values.append({name, {}});
        for (const QString& text : texts)
            values.append({name, text});
    }
}

bool Arguments::Has(const char* option) const
{
    return std::ranges::any_of(values, [option](const Value& value) { return value.option == QLatin1String(option); });
}

QStringList Arguments::Texts(const char* option) const
{
    QStringList texts;
    for (const Value& value : values)
        if (value.option == QLatin1String(option))
            texts << value.text;
    return texts;
}

QString Arguments::Text(const char* option) const
{
    return Texts(option).value(0);
}

std::optional<qint64> Arguments::Whole(const char* option, qint64 lowest, qint64 highest) const
{
    if (!Has(option))
        return std::nullopt;
    const QString text = Text(option);
    constexpr int decimal = 10;
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber, decimal);
    if (!isNumber || number < lowest || number > highest)
        throw Misuse(QString("valeur incorrecte « %1 » pour --%2 : un nombre entier de %3 à %4 est attendu")
                         .arg(text, option)
                         .arg(lowest)
                         .arg(highest));
    return number;
}

} // namespace practice
