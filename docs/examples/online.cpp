#include "utilities/online/FreeSoundOrg.h"
#include "utilities/online/ServiceHosts.h"
#include "vtrfutls/vtrfutls.h"

#include <gtest/gtest.h>

TEST(Example, Online) {
    // Another server than the public one, such as one of recorded replies.
    EXPECT_TRUE(SetSoundRepoHost("http://localhost:8080"));
    EXPECT_FALSE(SetSoundRepoHost("no such host"));
    EXPECT_TRUE(SetSoundRepoHost(nullptr)); // the public service again

    MyInternetAccess access("host");
    CFreeSoundOrg sounds(/*filterBadWords=*/true, &access);
    // `DoSearch` begins, and a timer of the host asks for the state: docs/online.md.
    EXPECT_TRUE(access.IsOpen());
}
