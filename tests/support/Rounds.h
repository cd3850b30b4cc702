#ifndef VTRUTILS_TESTS_SUPPORT_ROUNDS_H
#define VTRUTILS_TESTS_SUPPORT_ROUNDS_H

#include "tests/support/Dice.h"

#include <gtest/gtest.h>

/// Calls `step` with dice and the numbers from 0 on, `rounds` times or until it fails for good.
/// Failures tell the seed and the round.
template <class Step>
void EachRound(unsigned seed, int rounds, Step step) {
    Dice dice(seed);
    for (int round = 0; round < rounds && !testing::Test::HasFatalFailure(); ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        step(dice, round);
    }
}

#endif
