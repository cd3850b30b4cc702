#include "utilities/system/RefObject.h"

#include <gtest/gtest.h>

namespace {

class Counted : public CRefObject {
public:
    explicit Counted(int& count) : deleted(count) {}
    Counted(const Counted&) = default;
    ~Counted() override { ++deleted; }

private:
    int& deleted;
};

TEST(RefObject, IsDeletedByItsLastUserAndCountsForItselfWhenCopied) {
    int deleted = 0;
    auto* object = new Counted(deleted);
    EXPECT_EQ(object->IncrementRefCount(), 2);
    auto* copy = new Counted(*object);
    EXPECT_EQ(copy->DecrementRefCount(), 0) << "a copy starts at 1";
    static_cast<CRefObject&>(*object) = *copy;
    DeleteMyObject(object);
    EXPECT_EQ(deleted, 0) << "assigning leaves the count";
    DeleteMyObject(object);
    EXPECT_EQ(deleted, 1);
    DeleteMyObject(copy);
    EXPECT_EQ(deleted, 2) << "below 1";
    DeleteMyObject(nullptr);
}

} // namespace
