#pragma once

#include "platform/basic/RuntimeError.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>
#include <ostream>

/// Printing of texts and dates in failed tests.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList& texts, std::ostream* out)
{
    *out << "[\"" << texts.join("\", \"").toStdString() << "\"]";
}
inline void PrintTo(const QDate& date, std::ostream* out)
{
    *out << date.toString(Qt::ISODate).toStdString();
}

namespace basic {
inline void PrintTo(Error error, std::ostream* out)
{
    *out << "error " << static_cast<int>(error);
}
} // namespace basic

using basic::Error;

/// The run-time error that `action` raises; none if it doesn't.
template <class Action>
std::optional<basic::Error> ErrorOf(Action action)
{
    try {
        action();
    } catch (const basic::RuntimeError& error) {
        return error.Code();
    }
    return std::nullopt;
}

/// Its number and description, as "61: Disque plein"; empty if `action` raises none.
template <class Action>
QString Raised(Action action)
{
    try {
        action();
    } catch (const basic::RuntimeError& error) {
        return QString::number(error.Number()) + ": " + error.Description();
    }
    return {};
}
