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
inline constexpr int Refused = 1; ///< or something is wrong with the practice
inline constexpr int Misused = 2; ///< arguments that make no sense, or what was asked for can't be read

/// Where a command reads answers and writes what it has to say.
struct Streams {
    QTextStream& input;
    QTextStream& output;
    QTextStream& errors;
};

/// The arguments make no sense; the text says why, in French and without a full stop.
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

/// What was typed after a command's name, taken apart.
class Arguments {
public:
    /// Raises Misuse for an unknown option, a missing one, a missing value, and too few or too many names.
    Arguments(const QStringList& words, std::span<const char* const> names, int optionalNames,
              std::span<const Option> options);

    /// The name at a position, from 0; empty when it is optional and wasn't given.
    QString Name(int position) const { return given.value(position); }
    bool Has(const char* option) const;
    QString Text(const char* option) const;
    QStringList Texts(const char* option) const;
    /// None when the option isn't given. Raises Misuse for what isn't a whole number from `lowest` to `highest`.
    std::optional<qint64> Whole(const char* option, qint64 lowest, qint64 highest) const;

private:
    struct Value {
        QString option;
        QString text;
    };
    QStringList given;
    QList<Value> values;
};

/// One command: what is typed, what it says of itself, what it does.
struct Command {
    const char* name;
    const char* usage; ///< its line or lines of the usage, after its name
    const char* help;  ///< what it does, lines indented by six
    std::span<const char* const> names;
    int optionalNames; ///< of the names, from the end
    std::span<const Option> options;
    int (*run)(const Arguments& arguments, const Streams& streams);
};

extern const Command newCommand;
extern const Command setCommand;
extern const Command demoCommand;
extern const Command importCommand;
extern const Command fieldsCommand;
extern const Command checkCommand;
extern const Command checkTemplateCommand;
extern const Command previewCommand;
extern const Command shortcutCommand;

} // namespace practice
