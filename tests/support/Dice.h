#ifndef VTRUTILS_TESTS_SUPPORT_DICE_H
#define VTRUTILS_TESTS_SUPPORT_DICE_H

#include <iterator>
#include <random>

/// Numbers at random, the same ones from the same seed.
class Dice {
public:
    explicit Dice(unsigned seed) : random(seed) {}

    /// 0, 1, ... or `limit` - 1.
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    /// One of a few.
    template <class Values>
    auto Any(const Values& values) {
        return values[static_cast<std::size_t>(Below(static_cast<int>(std::size(values))))];
    }

private:
    std::mt19937 random;
};

#endif
