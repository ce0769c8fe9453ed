#pragma once

#include <QtGlobal>

#include <optional>
#include <unordered_map>
#include <vector>

namespace dao {

/// The keys of a record set in its order, as they were at its opening; rows added through the set stand at the end.
///
/// The list may be the head of a whole table in key order. What follows is then the tail: every row whose key lies
/// above the list's last one and not above the table's highest at the opening.
class Members {
public:
    struct Tail {
        qint64 above = 0;
        qint64 upTo = 0;
        bool Holds(qint64 key) const { return key > above && key <= upTo; }
    };

    void Add(qint64 key);
    void Remove(std::size_t place);
    void Clear();

    std::size_t Count() const { return keys.size(); }
    qint64 operator[](std::size_t place) const { return keys[place]; }
    bool IsAscending() const { return ascending; }
    /// One look-up, whatever the order.
    std::optional<std::size_t> PlaceOf(qint64 key);
    /// The place of the first key that isn't below this one; for a list in ascending order.
    std::size_t FirstFrom(qint64 key) const;

    std::optional<Tail> tail;

private:
    std::vector<qint64> keys;
    bool ascending = true;
    std::unordered_map<qint64, std::size_t> places; // made when a set in another order is first searched
};

} // namespace dao
