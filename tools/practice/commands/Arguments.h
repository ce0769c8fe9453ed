#pragma once

#include <QString>
#include <QStringList>
#include <exception>
#include <optional>
#include <span>

namespace practice {

/// Thrown for invalid arguments. The reason is in French, without a full stop.
class Misuse : public std::exception {
public:
    explicit Misuse(QString text) : reason(std::move(text)) {}
    const QString& Reason() const { return reason; }

private:
    QString reason;
};

/// An option of a command; the name is without dashes.
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
    /// The value as an integer; none if the option is missing. Raises Misuse unless it is from `lowest` to `highest`.
    std::optional<qint64> Whole(const char* option, qint64 lowest, qint64 highest) const;

private:
    struct Value {
        QString option;
        QString text;
    };
    QStringList given;
    QList<Value> values;
};

} // namespace practice
