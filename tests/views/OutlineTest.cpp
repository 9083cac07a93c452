// OutlineTest.cpp — every registered view pinned as a whole: its tree read
// through the records must print exactly the outline kept for it in
// tests/views/outlines (one file per view, in the form `krmwtarn view NAME`
// prints: root class, size row, then every element with its depth, name, alias,
// nested list class, flag and delegated view).
#include "tests/views/ViewTestSupport.h"
#include <krmwtarn/views/ViewOutline.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace {

const std::filesystem::path outlines = KRMWTARN_VIEW_OUTLINES;

std::string expectedOutline(const std::string& view) {
    std::ifstream in(outlines / (view + ".txt"), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string outlineOf(DLLViewType* view) {
    const DLLViewList* root = view->_get_adViewList();
    if (!root) return std::string(view->name()) + " has no tree\n";
    const ViewShape shape = measureView(root);
    char head[256];
    std::snprintf(head, sizeof head, "%s (root %s; %d lists, %d elements, depth %d, %d delegating)\n\n", view->name(),
                  root->className, shape.lists, shape.elements, shape.depth, shape.delegating);
    return head + viewOutline(root);
}

TEST_F(ViewServiceTest, EveryRegisteredViewPrintsItsPinnedOutline) {
    std::set<std::string> registered;
    for (DLLViewType* view : DLLViewType::all()) {
        SCOPED_TRACE(view->name());
        registered.insert(view->name());
        EXPECT_EQ(outlineOf(view), expectedOutline(view->name()));
        forEachList(view->_get_adViewList(),
                    [&](const DLLViewList* list, const DLLViewElem*) { EXPECT_EQ(list->flags, 0); });
    }
    std::set<std::string> pinned;
    for (const auto& file : std::filesystem::directory_iterator(outlines)) pinned.insert(file.path().stem().string());
    EXPECT_EQ(pinned, registered);
    EXPECT_EQ(registered.size(), 7u + ewswtarnViewCount);
}

}  // namespace
