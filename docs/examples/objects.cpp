#include "utilities/system/objects/Observable.h"
#include "utilities/system/objects/RefObject.h"

#include <gtest/gtest.h>

namespace {

constexpr int started = 1;
constexpr int stopped = 2;

class Display final : public Observer {
public:
    void Attach(Observable* player) override { player->RegisterObservations(this, started, -1); }
    void OnNotify(int code, void*, Observable*) override { last = code; }

    int last = 0;
};

} // namespace

TEST(Example, Objects) {
    Observable player;
    Display display;
    player.AddObserver(&display);
    player.SendNotification(started, /*data=*/nullptr);
    player.SendNotification(stopped, /*data=*/nullptr); // which it did not register for
    EXPECT_EQ(display.last, started);
    player.RemoveObserver(&display);

    auto* shared = new CRefObject; // with one user
    EXPECT_EQ(shared->IncrementRefCount(), 2);
    DeleteMyObject(shared);
    DeleteMyObject(shared); // the last one deletes it
}
