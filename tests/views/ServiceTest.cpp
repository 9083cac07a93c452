// ServiceTest.cpp — the view service: registration order (data-dictionary views
// before this library's), lookup by name, building a tree once on first use,
// and registration objects run once each, in construction order.
#include <krmwtarn/platform/views/DictionaryViews.h>
#include "tests/views/ViewTestSupport.h"

#include <string>

namespace {

TEST_F(ViewServiceTest, DictionaryViewsAreRegisteredBeforeTheLibrarysViewsInTheirOrder) {
    std::vector<std::string> names;
    for (DLLViewType* t : DLLViewType::all()) names.push_back(t->name());
    ASSERT_GE(names.size(), 45u);
    const std::vector<std::string> dictionary = {"CVQDATAELEMENT",    "CVQDATASTRUCTURE",    "CVQDSALIAS",
                                                 "CORVIADATAELEMENT", "CORVIADATASTRUCTURE", "CORVIADEALIAS",
                                                 "CORVIADSALIAS"};
    EXPECT_EQ(std::vector<std::string>(names.begin(), names.begin() + 7), dictionary);
    for (int i = 0; i < ewswtarnViewCount; ++i) {
        const EwswtarnView& v = ewswtarnViews[i];
        EXPECT_EQ(names[7 + static_cast<std::size_t>(i)], v.name);
        DLLViewType* type = *v.variable;
        ASSERT_NE(type, nullptr) << v.name;
        EXPECT_EQ(DLLViewType::find(v.name), type);
        EXPECT_STREQ(type->secondName(), "");
        EXPECT_EQ(type->buildFunction(), v.build);
        ASSERT_NE(type->_get_adViewList(), nullptr) << v.name;
        EXPECT_STREQ(type->_get_adViewList()->className, v.rootClass);
        EXPECT_EQ(type->_get_adViewList()->flags, 0);
    }
    EXPECT_EQ(DLLViewType::find("NOSUCHVIEW"), nullptr);
}

int builds = 0;
void countingBuild(DLLViewType* view) {
    ++builds;
    view->_set_adViewList(new DLLViewList("DSPSB", nullptr, 0));
}

TEST(ViewType, BuildsItsTreeOnceOnFirstUse) {
    builds = 0;
    DLLViewType type("LAZYVIEW", "", countingBuild);
    EXPECT_FALSE(type.isBuilt());
    EXPECT_EQ(builds, 0);
    DLLViewList* first = type._get_adViewList();
    EXPECT_EQ(type._get_adViewList(), first);
    EXPECT_EQ(builds, 1);
    EXPECT_STREQ(first->className, "DSPSB");
}

std::vector<int> initOrder;
struct Recording : DLLView_init {
    explicit Recording(int id) : id(id) {}
    void init() override { initOrder.push_back(id); }
    int id;
};

TEST(ViewRegistrationObjects, RunOnceEachInConstructionOrder) {
    startViewService();
    initOrder.clear();
    Recording second(2), third(3);
    DLLView_init::initAll();
    DLLView_init::initAll();
    EXPECT_EQ(initOrder, (std::vector<int>{2, 3}));
}

}  // namespace
