// SampleTest.cpp — the built-in sample builds cleanly, keeps its PCB order and
// is the same objects when built twice (its objects are found by name).
#include "TestSupport.h"

#include <krmwtarn/sample/SampleModel.h>

using Sample = RepositoryTest;

TEST_F(Sample, BuildsOnceAndSharesItsObjectsWhenBuiltAgain) {
    std::size_t before = DSRegistrar::count();
    sample::Model m = sample::build();
    std::size_t objects = DSRegistrar::count() - before;
    EXPECT_GT(objects, 100u);
    std::vector<std::string> pcbs;
    for (DSPCB* p = m.psb->_getFirst_listPCBs(); p; p = m.psb->_getNext_listPCBs())
        pcbs.push_back((*p)->_get_strPCBAccessName());
    EXPECT_EQ(pcbs, (std::vector<std::string>{"HOSPPCB", "NAMEPCB", "ALTPCB"}));
    EXPECT_STREQ(DSRegistrar::findObj("DSDBD", "HOSPDBD", sample::kVersion)->whoAmI(), "DSDBD");
    // Built again, every link is a duplicate: the second build must refuse it.
    EXPECT_TRUE(thrown([] { sample::build(); }));
}
