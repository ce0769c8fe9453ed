#pragma once

#include "platform/dao/Recordset.h"

#include <QHash>
#include <QStringList>
#include <optional>
#include <vector>

namespace core {

/// Looks up the texts of patients or services by their key while a list is filled, each of them once.
class NameLookup {
public:
    /// `table` is searched by its key; `fields` are those whose texts are wanted.
    NameLookup(const dao::Recordset& table, std::vector<const char*> fields);

    /// The texts of the fields, a null QString for a field that is Null; none when there is no row with this key or the
    /// key is Null itself. Valid until the next call.
    const std::optional<QStringList>& Find(const dao::Field& key);
    const std::optional<QStringList>& Find(dao::Key key);

private:
    dao::Recordset rows;
    std::vector<const char*> fields;
    QHash<dao::Key, std::optional<QStringList>> known;
};

} // namespace core
