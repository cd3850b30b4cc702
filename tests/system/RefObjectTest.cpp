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

TEST(RefObject, IsDeletedByItsLastUser) {
    int deleted = 0;
    auto* object = new Counted(deleted);
    EXPECT_EQ(object->IncrementRefCount(), 2);
    DeleteMyObject(object);
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(object->IncrementRefCount(), 2);
    EXPECT_EQ(object->DecrementRefCount(), 1);
    DeleteMyObject(object);
    EXPECT_EQ(deleted, 1);
    DeleteMyObject(nullptr);

    auto* released = new Counted(deleted);
    EXPECT_EQ(released->DecrementRefCount(), 0);
    DeleteMyObject(released);
    EXPECT_EQ(deleted, 2) << "below 1";
}

TEST(RefObject, CountsForItselfWhenCopied) {
    int deleted = 0;
    Counted object(deleted);
    object.IncrementRefCount();
    CRefObject copy(object);
    EXPECT_EQ(copy.IncrementRefCount(), 2) << "a copy starts at 1";
    copy.IncrementRefCount();
    static_cast<CRefObject&>(object) = copy;
    EXPECT_EQ(object.IncrementRefCount(), 3) << "assigning leaves the count";
}

} // namespace
