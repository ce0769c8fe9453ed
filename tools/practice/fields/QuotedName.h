#pragma once

#include "platform/dao/Sqlite.h"

#include <QString>

namespace practice {

/// The name as a quoted identifier of a statement.
inline QString QuotedName(const QString& name)
{
    return QString::fromStdString(dao::Quoted(name.toStdString()));
}

} // namespace practice
