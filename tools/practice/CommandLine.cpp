#include "practice/CommandLine.h"

#include "data/Practice.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "practice/Check.h"
#include "practice/Demo.h"
#include "practice/Import.h"
#include "practice/TemplateCheck.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace practice {
namespace {

constexpr int done = 0;
constexpr int refused = 1;
constexpr int misused = 2;

constexpr const char* usage =
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

struct NewArguments {
    std::string folder;
    int code = 0;
    std::vector<std::string> letterhead;
    std::string language = "fr";
};

struct ImportArguments {
    std::string folder;
    std::string table;
    std::string file;
};

struct DemoArguments {
    std::string folder;
    std::string until;
    DemoOptions options;
};

int RunNew(const NewArguments& arguments, QTextStream& output)
{
    data::PracticeSetup setup{
        .accessCode = arguments.code, .letterhead = {}, .language = data::TooltipLanguage::French};
    if (arguments.language == "ar")
        setup.language = data::TooltipLanguage::Arabic;
    for (const std::string& line : arguments.letterhead)
        setup.letterhead << QString::fromStdString(line);
    const QString folder = QString::fromStdString(arguments.folder);
    data::CreatePractice(folder, setup);
    output << "Cabinet créé : " << folder << "\nCode d'accès : " << setup.accessCode << "\n";
    return done;
}

int RunDemo(const DemoArguments& arguments, QTextStream& output)
{
    DemoOptions options = arguments.options;
    if (!arguments.until.empty())
        options.until = basic::DateValue(QString::fromStdString(arguments.until));
    const QString folder = QString::fromStdString(arguments.folder);
    MakeDemo(folder, options);
    output << "Cabinet de démonstration : " << folder << "\nCode d'accès : " << DemoAccessCode << "\n";
    return done;
}

int RunImport(const ImportArguments& arguments, QTextStream& output, QTextStream& errors)
{
    const ImportResult result =
        ImportCsv(QString::fromStdString(arguments.folder), QString::fromStdString(arguments.table),
                  QString::fromStdString(arguments.file));
    if (result.problems.isEmpty()) {
        output << result.added << " ligne(s) ajoutée(s) à " << QString::fromStdString(arguments.table) << ".\n";
        return done;
    }
    for (const QString& problem : result.problems)
        errors << problem << "\n";
    errors << "Import refusé : " << result.problems.size() << " ligne(s) incorrecte(s), rien n'a été ajouté.\n";
    return refused;
}

int RunCheck(const std::string& folder, QTextStream& output)
{
    const CheckReport report = CheckPractice(QString::fromStdString(folder));
    for (const QString& fact : report.facts)
        output << "  " << fact << "\n";
    for (const QString& remark : report.remarks)
        output << "  Remarque : " << remark << "\n";
    for (const QString& failure : report.failures)
        output << "  ERREUR : " << failure << "\n";
    output << (report.failures.isEmpty() ? "Le cabinet est en ordre.\n" : "Le cabinet n'est pas en ordre.\n");
    return report.failures.isEmpty() ? done : refused;
}

int RunCheckTemplate(const std::string& file, QTextStream& output)
{
    const QStringList mistakes = CheckReportTemplate(QString::fromStdString(file));
    for (const QString& mistake : mistakes)
        output << mistake << "\n";
    if (mistakes.isEmpty())
        output << "Le modèle est en ordre.\n";
    return mistakes.isEmpty() ? done : refused;
}

/// The subcommands and where their arguments go.
struct Commands {
    CLI::App app;
    NewArguments newArguments;
    DemoArguments demo;
    ImportArguments import;
    std::string checkFolder;
    std::string checkedTemplate;
    CLI::App* newCommand = app.add_subcommand("new");
    CLI::App* demoCommand = app.add_subcommand("demo");
    CLI::App* importCommand = app.add_subcommand("import");
    CLI::App* checkCommand = app.add_subcommand("check");
    CLI::App* checkTemplateCommand = app.add_subcommand("check-template");

    Commands()
    {
        app.require_subcommand(1);
        app.set_help_flag();
        for (CLI::App* command : {newCommand, demoCommand, importCommand, checkCommand, checkTemplateCommand})
            command->set_help_flag();

        newCommand->add_option("DOSSIER", newArguments.folder)->required();
        newCommand->add_option("--code", newArguments.code)->required();
        newCommand->add_option("--letterhead", newArguments.letterhead)
            ->required()
            ->expected(1, data::letterheadFields);
        newCommand->add_option("--language", newArguments.language)->check(CLI::IsMember({"fr", "ar"}));

        DemoOptions& options = demo.options;
        demoCommand->add_option("DOSSIER", demo.folder)->required();
        demoCommand->add_option("--acts", options.acts)->check(CLI::Range(1, 20'000'000));
        demoCommand->add_option("--patients", options.patients)->check(CLI::Range(1, 1'000'000));
        demoCommand->add_option("--services", options.services)->check(CLI::Range(1, 1000));
        demoCommand->add_option("--days", options.days)->check(CLI::Range(1, 20'000));
        demoCommand->add_option("--expenses", options.expenses)->check(CLI::Range(0, 10'000'000));
        demoCommand->add_option("--seed", options.seed);
        demoCommand->add_option("--until", demo.until)->check([](const std::string& text) {
            try {
                basic::DateValue(QString::fromStdString(text));
                return std::string();
            } catch (const basic::RuntimeError&) {
                return std::string("date");
            }
        });

        importCommand->add_option("DOSSIER", import.folder)->required();
        importCommand->add_option("TABLE", import.table)->required();
        importCommand->add_option("FICHIER", import.file)->required();
        checkCommand->add_option("DOSSIER", checkFolder)->required();
        checkTemplateCommand->add_option("FICHIER", checkedTemplate)->required();
    }

    int Run(QTextStream& output, QTextStream& errors) const
    {
        if (newCommand->parsed())
            return RunNew(newArguments, output);
        if (demoCommand->parsed())
            return RunDemo(demo, output);
        if (importCommand->parsed())
            return RunImport(import, output, errors);
        if (checkTemplateCommand->parsed())
            return RunCheckTemplate(checkedTemplate, output);
        return RunCheck(checkFolder, output);
    }
};

/// What the parser didn't like, in the user's language. Its own sentence is English; the argument's name comes first in
/// it, or last where the argument isn't known.
QString Explain(const CLI::ParseError& error)
{
    const QString sentence = QString::fromUtf8(error.what());
    const QString first = sentence.section(' ', 0, 0).remove(':');
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr)
        return "argument inconnu ou en trop : " + sentence.section(": ", -1);
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
        return first == "A" ? QString("il faut une commande : new, demo, import, check ou check-template")
                            : "il manque " + first;
    return "valeur incorrecte ou absente pour " + first;
}

} // namespace

int RunCommand(const QStringList& arguments, QTextStream& output, QTextStream& errors)
{
    if (arguments.contains("--help") || arguments.contains("-h")) {
        output << usage;
        return done;
    }
    Commands commands;
    std::vector<std::string> words; // the parser takes them from the end
    for (const QString& argument : arguments)
        words.insert(words.begin(), argument.toStdString());
    try {
        commands.app.parse(words);
    } catch (const CLI::ParseError& error) {
        errors << "practice : " << Explain(error) << ".\n\n" << usage;
        return misused;
    }
    try {
        return commands.Run(output, errors);
    } catch (const basic::RuntimeError& error) {
        errors << "practice : " << error.Description() << "\n";
        return refused;
    }
}

} // namespace practice
