#include "common/Require.h"

#include "utilities/base/StoreCut.h"

#include <cstdlib>
#include <gtest/gtest.h>

#ifdef NDEBUG
#error "only a debug build asserts what is required"
#endif

namespace {

const testing::ExitedWithCode asBroken(static_cast<int>(vtr::brokenRequirementCode));

// Anything that ran between the message and the end would change the exit code.
void RequireInChild(bool condition) {
    std::atexit([] { std::_Exit(0); });
    VTR_REQUIRE(condition);
    std::exit(1);
}

TEST(Require, ABrokenOneEndsTheProcessAndNamesFileAndCondition) {
    EXPECT_EXIT(RequireInChild(false), asBroken, "RequireTest\\.cpp:\\d+: .*: condition\\r?\\n");
    char buffer[4] = "";
    EXPECT_EXIT(vtr::StoreCut("text", buffer, 0), asBroken,
                "StoreCut\\.h:\\d+: .*: size > 0\\r?\\n");
}

TEST(Require, AKeptOneIsEvaluatedOnce) {
    int times = 0;
    VTR_REQUIRE(++times > 0);
    EXPECT_EQ(times, 1);
}

} // namespace
