#include "platform/dao/TableSet.h"

#include "platform/basic/RuntimeError.h"

#include <limits>

namespace dao {
namespace {

/// The number N of a condition that reads "KEY = N" and nothing else.
std::optional<qint64> KeyAskedFor(const Phrase& condition, const Table& table)
{
    if (table.keyColumn < 0 || condition.literals.size() != 1 || condition.literals[0].kind != Kind::Whole)
        return std::nullopt;
    const std::u16string_view shape = condition.shape;
    const std::string& key = table.columns[table.keyColumn].name;
    // The name, a blank, the sign, a blank, the mark of a literal.
    const bool shaped = shape.size() == key.size() + 4 && shape[key.size()] == u' ' && shape[key.size() + 1] == u'=';
    if (!shaped || QStringView(shape.substr(0, key.size()))
                           .compare(QLatin1StringView(key.data(), qsizetype(key.size())), Qt::CaseInsensitive) != 0)
        return std::nullopt;
    return condition.literals[0].whole;
}

} // namespace

void TableSet::FindFirst(const QString& criteria)
{
    DropPending();
    RequireRows();
    const Phrase condition = TakeApart(criteria);
    connection->Settle();
    if (const auto sought = KeyAskedFor(condition, table))
        noMatch = !FindKey(*sought);
    else
        noMatch = !FindWhere(criteria, condition);
}

bool TableSet::FindKey(qint64 sought)
{
    const auto listed = members.PlaceOf(sought);
    const bool inTail = !listed && members.tail && members.tail->Holds(sought);
    if ((!listed && !inTail) || !ReadSingle(sought))
        return false;
    Stand(inTail ? Place::Tail : Place::Listed, listed.value_or(0), sought);
    return true;
}

bool TableSet::FindWhere(const QString& criteria, const Phrase& condition)
{
    auto known = table.criteria.find(condition.shape);
    if (known == table.criteria.end()) {
        connection->BoundKept();
        known = table.criteria.emplace(condition.shape, TranslateCriteria(criteria, table)).first;
    }
    // One scan is quicker than a look at each key; on a list in another order, or a part of the table, it isn't.
    if (plan.whole && members.IsAscending())
        return FindByScan(known->second, condition.literals);
    return FindByKeys(known->second, condition.literals);
}

bool TableSet::FindByScan(const Criteria& criteria, const std::vector<Datum>& values)
{
    Statement& scan = connection->Kept(criteria.scan);
    const ResetAtEnd reset(scan);
    const int places = int(values.size());
    for (int i = 0; i < places; ++i)
        scan.Bind(i + 1, values[std::size_t(i)]);
    scan.Bind(places + 1, std::numeric_limits<qint64>::min());
    scan.Bind(places + 2, members.tail ? members.tail->upTo : LastListed());
    while (scan.Step()) {
        if (FindKey(scan.WholeAt(0)))
            return true;
    }
    return false;
}

bool TableSet::FindByKeys(const Criteria& criteria, const std::vector<Datum>& values)
{
    Statement& meets = connection->Kept(criteria.byKey);
    const int places = int(values.size());
    for (std::size_t i = 0; i < members.Count(); ++i) {
        const ResetAtEnd reset(meets);
        for (int value = 0; value < places; ++value)
            meets.Bind(value + 1, values[std::size_t(value)]);
        meets.Bind(places + 1, members[i]);
        if (!meets.Step() || !ReadSingle(members[i]))
            continue;
        Stand(Place::Listed, i, members[i]);
        return true;
    }
    return false;
}

} // namespace dao
