#pragma once

#include "platform/store/Sqlite.h"

#include <QString>

namespace practice {

/// The name as a quoted identifier of a statement.
inline QString QuotedName(const QString& name)
{
    return QString::fromStdString(store::Quoted(name.toStdString()));
}

} // namespace practice
