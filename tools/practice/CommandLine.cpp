#include "practice/CommandLine.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "practice/Check.h"
#include "practice/Demo.h"
#include "practice/Import.h"
#include "practice/TemplateCheck.h"

#include <QCommandLineParser>
#include <QDate>
#include <limits>
#include <optional>
#include <vector>

namespace practice {
namespace {

constexpr int Done = 0;
constexpr int Refused = 1;
constexpr int Misused = 2;

constexpr auto Usage =
    "Utilisation :\n"
    "  practice new DOSSIER --code N --letterhead LIGNE... [--language fr|ar]\n"
    "      Crée un cabinet vide. N est le code d'accès à saisir : un nombre pair de -32768 à 32766.\n"
    "      Jusqu'à 16 lignes d'en-tête ; les quatre premières ont au plus 40, 30, 20 et 20 caractères.\n"
    "\n"
    "  practice demo DOSSIER [--acts N] [--seed N] [--until DATE]\n"
    "                        [--patients N] [--services N] [--days N] [--expenses N]\n"
    "      Crée un cabinet de démonstration dont DATE (aujourd'hui sinon) est le dernier jour.\n"
    "      Les mêmes options donnent toujours les mêmes données.\n"
    "\n"
    "  practice import DOSSIER TABLE FICHIER.csv\n"
    "      Ajoute des lignes à Patients, Actes, Plani ou Actes_suppr : toutes ou aucune.\n"
    "      La première ligne nomme les champs ; virgule ou point-virgule, UTF-8,\n"
    "      dates jj/mm/aaaa ou aaaa-mm-jj, une valeur vide est Null.\n"
    "      Sont obligatoires : num ; pour Actes aussi Date, HH, montant et flag_R ;\n"
    "      pour Plani aussi date, Num_Presta et HH.\n"
    "\n"
    "  practice check DOSSIER\n"
    "      Contrôle les fichiers, la base de données, les codes et les clés. Ne modifie rien.\n"
    "\n"
    "  practice check-template FICHIER.RPT\n"
    "      Contrôle un modèle d'état : chaque erreur avec sa ligne. Ne modifie rien.\n";

/// Arguments that make no sense; the reason is a part of a sentence.
struct Misuse {
    QString reason;
};

/// One subcommand: the names of its arguments in order, the options that it knows, each of which takes a value.
struct Subcommand {
    const char* name;
    QStringList places;
    QStringList options = {};
    bool takesMore = false; ///< further arguments may follow those named
};

/// What was typed behind a subcommand.
class Arguments {
public:
    Arguments(const Subcommand& command, const QStringList& typed)
    {
        for (const QString& option : command.options)
            parser.addOption({option, {}, "valeur"});
        parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        if (!parser.parse(QStringList(command.name) + typed))
            throw Misuse{parser.unknownOptionNames().isEmpty()
                             ? "il manque la valeur de " + typed.last()
                             : "option inconnue : " + parser.unknownOptionNames().join(", ")};
        places = parser.positionalArguments();
        for (qsizetype place = 0; place < command.places.size(); ++place)
            if (places.value(place).trimmed().isEmpty())
                throw Misuse{"il manque " + command.places[place]};
        if (!command.takesMore && places.size() > command.places.size())
            throw Misuse{"argument en trop : " + places[command.places.size()]};
    }

    QString Place(int place) const { return places[place]; }
    /// What follows the arguments that have a name.
    QStringList More(int from) const { return places.mid(from); }
    QStringList Texts(const QString& option) const { return parser.values(option); }

    /// The whole number of an option; `otherwise` when it isn't given.
    std::optional<int> Number(const QString& option, int least, int most, std::optional<int> otherwise = {}) const
    {
        if (!parser.isSet(option))
            return otherwise;
        bool isNumber = false;
        const int number = parser.value(option).toInt(&isNumber);
        if (!isNumber || number < least || number > most)
            throw Misuse{QString("valeur incorrecte de --%1 : %2").arg(option, parser.value(option))};
        return number;
    }

    QString Required(const QString& option) const
    {
        if (!parser.isSet(option))
            throw Misuse{"il manque --" + option};
        return parser.value(option);
    }

    QDate Date(const QString& option, const QDate& otherwise) const
    {
        if (!parser.isSet(option))
            return otherwise;
        for (const char* const form : {"dd/MM/yyyy", "yyyy-MM-dd"})
            if (const QDate date = QDate::fromString(parser.value(option), form); date.isValid())
                return date;
        throw Misuse{QString("date incorrecte de --%1 : %2").arg(option, parser.value(option))};
    }

private:
    QCommandLineParser parser;
    QStringList places;
};

/// The lines stand behind one --letterhead or behind one each.
QStringList LetterheadOf(const Arguments& arguments)
{
    QStringList lines = arguments.Texts("letterhead");
    const QStringList following = arguments.More(1);
    if (lines.isEmpty())
        throw Misuse{"il manque --letterhead"};
    if (!following.isEmpty() && lines.size() > 1)
        throw Misuse{"argument en trop : " + following.first()};
    lines += following;
    if (lines.size() > data::letterheadFields)
        throw Misuse{QString("--letterhead a au plus %1 lignes").arg(data::letterheadFields)};
    return lines;
}

data::TooltipLanguage LanguageOf(const Arguments& arguments)
{
    const QString language = arguments.Texts("language").isEmpty() ? "fr" : arguments.Texts("language").last();
    if (language != "fr" && language != "ar")
        throw Misuse{"valeur incorrecte de --language : " + language};
    return language == "ar" ? data::TooltipLanguage::Arabic : data::TooltipLanguage::French;
}

int RunNew(const Arguments& arguments, QTextStream& output, QTextStream&)
{
    constexpr int largest = std::numeric_limits<int>::max();
    arguments.Required("code");
    const data::PracticeSetup setup{.accessCode = *arguments.Number("code", -largest, largest, 0),
                                    .letterhead = LetterheadOf(arguments),
                                    .language = LanguageOf(arguments)};
    data::CreatePractice(arguments.Place(0), setup);
    output << "Cabinet créé : " << arguments.Place(0) << "\nCode d'accès : " << setup.accessCode << "\n";
    return Done;
}

int RunDemo(const Arguments& arguments, QTextStream& output, QTextStream&)
{
    DemoOptions options;
    options.acts = arguments.Number("acts", 1, 20'000'000, options.acts);
    options.patients = arguments.Number("patients", 1, 1'000'000, options.patients);
    options.services = arguments.Number("services", 1, 1000, options.services);
    options.days = arguments.Number("days", 1, 20'000, options.days);
    options.expenses = arguments.Number("expenses", 0, 10'000'000, options.expenses);
    options.seed = quint64(*arguments.Number("seed", 0, std::numeric_limits<int>::max(), int(options.seed)));
    options.until = arguments.Date("until", options.until);
    MakeDemo(arguments.Place(0), options);
    output << "Cabinet de démonstration : " << arguments.Place(0) << "\nCode d'accès : " << DemoAccessCode << "\n";
    return Done;
}

int RunImport(const Arguments& arguments, QTextStream& output, QTextStream& errors)
{
    const ImportResult result = ImportCsv(arguments.Place(0), arguments.Place(1), arguments.Place(2));
    if (result.problems.isEmpty()) {
        output << result.added << " ligne(s) ajoutée(s) à " << arguments.Place(1) << ".\n";
        return Done;
    }
    for (const QString& problem : result.problems)
        errors << problem << "\n";
    errors << "Import refusé : " << result.problems.size() << " problème(s), rien n'a été ajouté.\n";
    return Refused;
}

int RunCheck(const Arguments& arguments, QTextStream& output, QTextStream&)
{
    const CheckReport report = CheckPractice(arguments.Place(0));
    for (const QString& fact : report.facts)
        output << "  " << fact << "\n";
    for (const QString& remark : report.remarks)
        output << "  Remarque : " << remark << "\n";
    for (const QString& failure : report.failures)
        output << "  ERREUR : " << failure << "\n";
    output << (report.failures.isEmpty() ? "Le cabinet est en ordre.\n" : "Le cabinet n'est pas en ordre.\n");
    return report.failures.isEmpty() ? Done : Refused;
}

int RunCheckTemplate(const Arguments& arguments, QTextStream& output, QTextStream&)
{
    const QStringList mistakes = CheckReportTemplate(arguments.Place(0));
    for (const QString& mistake : mistakes)
        output << mistake << "\n";
    if (mistakes.isEmpty())
        output << "Le modèle est en ordre.\n";
    return mistakes.isEmpty() ? Done : Refused;
}

struct Entry {
    Subcommand command;
    int (*run)(const Arguments&, QTextStream& output, QTextStream& errors);
};

const std::vector<Entry>& Entries()
{
    static const std::vector<Entry> entries{
        {{"new", {"DOSSIER"}, {"code", "letterhead", "language"}, true}, RunNew},
        {{"demo", {"DOSSIER"}, {"acts", "patients", "services", "days", "expenses", "seed", "until"}}, RunDemo},
        {{"import", {"DOSSIER", "TABLE", "FICHIER"}}, RunImport},
        {{"check", {"DOSSIER"}}, RunCheck},
        {{"check-template", {"FICHIER"}}, RunCheckTemplate},
    };
    return entries;
}

const Entry& EntryOf(const QStringList& typed)
{
    for (const Entry& entry : Entries())
        if (!typed.isEmpty() && typed.first() == QLatin1String(entry.command.name))
            return entry;
    throw Misuse{typed.isEmpty() ? "il faut une commande : new, demo, import, check ou check-template"
                                 : "commande inconnue : " + typed.first()};
}

} // namespace

int RunCommand(const QStringList& arguments, QTextStream& output, QTextStream& errors)
{
    if (arguments.contains("--help") || arguments.contains("-h")) {
        output << Usage;
        return Done;
    }
    try {
        const Entry& entry = EntryOf(arguments);
        return entry.run(Arguments(entry.command, arguments.mid(1)), output, errors);
    } catch (const Misuse& misuse) {
        errors << "practice : " << misuse.reason << ".\n\n" << Usage;
        return Misused;
    } catch (const basic::RuntimeError& error) {
        errors << "practice : " << error.Description() << "\n";
        return Refused;
    }
}

} // namespace practice
