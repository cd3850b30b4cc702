#include "utilities/undo/UndoMgr.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

/// One elementary change of a document, here of its volume.
class VolumeChange : public CUndoAtom {
public:
    VolumeChange(int& changed, int newValue) : volume(changed), other(newValue) { Swap(); }
    CUndoAtom* Clone() override { return new VolumeChange(*this); }
    void Perform(bool) override { Swap(); }
    void GetDescription(char* buffer, unsigned size) override { strncpy(buffer, "Volume", size); }

private:
    void Swap() { std::swap(volume, other); }

    int& volume;
    int other;
};

} // namespace

TEST(Example, Undo) {
    int volume = 50;
    CUndoMgr history(/*maxUndos=*/100);
    history.NextUndoSet("Louder");
    history.AddUndoNode(new VolumeChange(volume, 80));
    EXPECT_STREQ(history.GetUndoSetName(), "Louder");
    EXPECT_EQ(history.Dirty(), 1);

    history.Undo();
    EXPECT_EQ(volume, 50);
    EXPECT_EQ(history.Dirty(), 0);
    history.Redo();
    EXPECT_EQ(volume, 80);
}
