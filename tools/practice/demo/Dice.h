#pragma once

#include <QtGlobal>
#include <numeric>
#include <span>

namespace practice {

/// A portable generator: the distributions of the standard library differ between implementations, but a seed must give
/// the same demo everywhere.
class Dice {
public:
    explicit Dice(quint64 seed) : state(seed) {}

    /// A number from 0 to `bound` - 1.
    int Below(int bound) { return static_cast<int>((Next() >> 32) * static_cast<quint64>(bound) >> 32); }
    /// A number from `low` to `high`, both included.
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool OneIn(int chances) { return Below(chances) == 0; }
    bool Percent(int chance) { return Below(100) < chance; }

    template <typename List>
    const auto& Pick(const List& list)
    {
        return list[static_cast<std::size_t>(Below(static_cast<int>(std::size(list))))];
    }

    /// A random index, with probabilities proportional to the weights.
    int Weighted(std::span<const int> weights)
    {
        int left = Below(std::accumulate(weights.begin(), weights.end(), 0));
        int index = 0;
        while (left >= weights[static_cast<std::size_t>(index)])
            left -= weights[static_cast<std::size_t>(index++)];
        return index;
    }

private:
    quint64 Next()
    {
        state += 0x9E3779B97F4A7C15U;
        quint64 mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31);
    }

    quint64 state;
};

} // namespace practice
