#pragma once

#include "platform/basic/RuntimeError.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <ostream>

/// How a failed test shows texts and dates.
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

/// The number of the run-time error that `action` raises, 0 when it raises none.
template <class Action>
int ErrorOf(Action action)
{
    try {
        action();
    } catch (const basic::RuntimeError& error) {
        return error.number;
    }
    return 0;
}
