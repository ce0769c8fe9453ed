#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <exception>
#include <functional>
#include <optional>
#include <span>

namespace practice {

/// Exit codes.
inline constexpr int Done = 0;
inline constexpr int Refused = 1; ///< or the practice has a fault
inline constexpr int Misused = 2; ///< invalid arguments, or unreadable input

/// The streams of a command.
struct Streams {
    QTextStream& input;
    QTextStream& output;
    QTextStream& errors;
};

/// Invalid arguments; the text gives the reason in French, without a full stop.
class Misuse : public std::exception {
public:
    explicit Misuse(QString text) : reason(std::move(text)) {}
    const QString& Reason() const { return reason; }

private:
    QString reason;
};

/// An option of a command, without its dashes.
struct Option {
    enum class Takes { Nothing, OneValue, Values };

    const char* name;
    Takes takes = Takes::Nothing;
    bool required = false;
};

/// The parsed arguments of a command.
class Arguments {
public:
    /// Raises Misuse for unknown or missing options, missing values, and too few or too many names.
    Arguments(const QStringList& words, std::span<const char* const> names, int optionalNames,
              std::span<const Option> options);

    /// The name at a position, from 0; empty if it is optional and missing.
    QString Name(int position) const { return given.value(position); }
    bool Has(const char* option) const;
    QString Text(const char* option) const;
    QStringList Texts(const char* option) const;
    /// None if the option is missing. Raises Misuse unless it is an integer from `lowest` to `highest`.
    std::optional<qint64> Whole(const char* option, qint64 lowest, qint64 highest) const;

private:
    struct Value {
        QString option;
        QString text;
    };
    QStringList given;
    QList<Value> values;
};

/// One command: syntax, help and implementation.
struct Command {
    const char* name;
    const char* usage; ///< its line or lines of the usage, after its name
    const char* help;  ///< what it does, lines indented by six
    std::span<const char* const> names;
    int optionalNames; ///< of the names, from the end
    std::span<const Option> options;
    int (*run)(const Arguments& arguments, const Streams& streams);
    int trouble = Refused; ///< exit code after a run-time error
};

extern const Command NewCommand;
extern const Command SetCommand;
extern const Command DemoCommand;
extern const Command ImportCommand;
extern const Command FieldsCommand;
extern const Command ArchivesCommand;
extern const Command CompareCommand;
extern const Command RestoreCommand;
extern const Command CheckCommand;
extern const Command RepairCommand;
extern const Command CheckTemplateCommand;
extern const Command PreviewCommand;
extern const Command ShortcutCommand;

} // namespace practice
