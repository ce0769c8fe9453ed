#include "core/NameLookup.h"

#include "core/lists.h"

namespace core {

NameLookup::NameLookup(const dao::Recordset& table, std::vector<const char*> wantedFields)
    : rows(table), fields(std::move(wantedFields))
{
}

const std::optional<QStringList>& NameLookup::Find(const dao::Field& key)
{
    static const std::optional<QStringList> none;
    return key.IsNull() ? none : Find(key.Key());
}

const std::optional<QStringList>& NameLookup::Find(dao::Key key)
{
    const auto found = known.constFind(key);
    if (found != known.constEnd())
        return *found;
    std::optional<QStringList>& texts = known[key];
    if (!FindKey(rows, key))
        return texts;
    texts.emplace();
    for (const char* name : fields) {
        const dao::Field field = rows[name];
        *texts << (field.IsNull() ? QString() : field.Text());
    }
    return texts;
}

} // namespace core
