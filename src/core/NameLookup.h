#pragma once

#include "platform/dao/Recordset.h"

#include <QHash>
#include <QStringList>
#include <optional>
#include <vector>

namespace core {

/// Looks up texts of patients or services by key while a list is filled, each only once.
class NameLookup {
public:
    /// `table` is searched by key; `fields` are the fields to read.
    NameLookup(const dao::Recordset& table, std::vector<const char*> fields);

    /// The field texts, a null QString for Null; none when the key is Null or has no row. Valid until the next call.
    const std::optional<QStringList>& Find(const dao::Field& key);
    const std::optional<QStringList>& Find(dao::Key key);

private:
    dao::Recordset rows;
    std::vector<const char*> fields;
    QHash<dao::Key, std::optional<QStringList>> known;
};

} // namespace core
