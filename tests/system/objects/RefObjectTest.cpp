#include "utilities/system/objects/RefObject.h"

#include <gtest/gtest.h>

namespace {

int deleted = 0;

struct Counted : CRefObject {
    Counted() = default;
    Counted(const Counted&) = default;
    Counted& operator=(const Counted&) = default;
    ~Counted() override { ++deleted; }
};

TEST(RefObject, IsDeletedByItsLastUserAndCountsForItselfWhenCopied) {
    auto* object = new Counted;
    EXPECT_EQ(object->IncrementRefCount(), 2);
    auto* copy = new Counted(*object);
    EXPECT_EQ(copy->DecrementRefCount(), 0) << "a copy starts at 1";
    *object = *copy;
    DeleteMyObject(object);
    EXPECT_EQ(deleted, 0) << "assigning leaves the count";
    DeleteMyObject(object);
    EXPECT_EQ(deleted, 1);
    DeleteMyObject(copy);
    EXPECT_EQ(deleted, 2) << "below 1";
    DeleteMyObject(nullptr);
}

} // namespace
