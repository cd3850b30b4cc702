#ifndef VTRUTILS_TESTS_SUPPORT_DICE_H
#define VTRUTILS_TESTS_SUPPORT_DICE_H

#include <random>

/// Numbers at random, the same ones from the same seed.
class Dice {
public:
    explicit Dice(unsigned seed) : random(seed) {}

    /// 0, 1, ... or `limit` - 1.
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

private:
    std::mt19937 random;
};

#endif
