#include "platform/dao/Members.h"

#include <algorithm>

namespace dao {

void Members::Add(qint64 key)
{
    ascending = ascending && (keys.empty() || key > keys.back());
    if (!places.empty())
        places.emplace(key, keys.size());
    keys.push_back(key);
}

void Members::Remove(std::size_t place)
{
    keys.erase(keys.begin() + qsizetype(place));
    places.clear();
}

void Members::Clear()
{
    keys.clear();
    places.clear();
    ascending = true;
}

std::size_t Members::FirstFrom(qint64 key) const
{
    return std::size_t(std::ranges::lower_bound(keys, key) - keys.begin());
}

std::optional<std::size_t> Members::PlaceOf(qint64 key)
{
    if (ascending) {
        const std::size_t place = FirstFrom(key);
        return place < keys.size() && keys[place] == key ? std::optional(place) : std::nullopt;
    }
    if (places.empty()) {
        places.reserve(keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i)
            places.emplace(keys[i], i);
    }
    const auto found = places.find(key);
    return found == places.end() ? std::nullopt : std::optional(found->second);
}

} // namespace dao
