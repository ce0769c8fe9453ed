#include "practice/commands/CommandLine.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Version.h"

#include <array>

namespace practice {
namespace {

constexpr std::array Commands{&NewCommand,      &SetCommand,           &DemoCommand,    &AdoptCommand,
                              &ImportCommand,   &FeedCommand,          &ExportCommand,  &FieldsCommand,
                              &ArchivesCommand, &CompareCommand,       &RestoreCommand, &CheckCommand,
                              &RepairCommand,   &CheckTemplateCommand, &PreviewCommand, &ShortcutCommand};

QString UsageOf(const Command& command)
{
    const QString line = QString("practice %1 %2").arg(command.name, command.usage).trimmed();
    return "  " + line + "\n" + command.help;
}

/// The usage of one command, or of all.
QString Usage(const Command* one = nullptr)
{
    QString text = "Utilisation :\n";
    for (const Command* command : Commands)
        if (one == nullptr || one == command)
            text += UsageOf(*command) + (one == nullptr && command != Commands.back() ? "\n" : "");
    return text;
}

const Command* FindCommand(const QString& name)
{
    for (const Command* command : Commands)
        if (name == QLatin1String(command->name))
            return command;
    return nullptr;
}

QString WhyNoCommand(const QString& name)
{
    QStringList names;
    for (const Command* command : Commands)
        names << command->name;
    return QString("%1. Commandes : %2 (practice --help les décrit)")
        .arg(name.isEmpty() ? "il faut une commande" : "commande inconnue : « " + name + " »", names.join(", "));
}

} // namespace

int RunCommand(const QStringList& arguments, const Streams& streams)
{
    const QString name = arguments.value(0);
    const Command* const command = FindCommand(name);
    if (arguments.contains("--help") || arguments.contains("-h")) {
        streams.output << Usage(command);
        return Done;
    }
    if (name == "--version") {
        streams.output << "practice " << basic::Version() << "\n";
        return Done;
    }
    try {
        if (command == nullptr)
            throw Misuse(WhyNoCommand(name));
        return command->run(Arguments(arguments.mid(1), command->names, command->optionalNames, command->options),
                            streams);
    } catch (const Misuse& misuse) {
        streams.errors << "practice : " << misuse.Reason() << ".\n";
        if (command != nullptr)
            streams.errors << "\n" << Usage(command);
        return Misused;
    } catch (const basic::RuntimeError& error) {
        streams.errors << "practice : " << error.Description() << "\n";
        return command->trouble;
    }
}

} // namespace practice
