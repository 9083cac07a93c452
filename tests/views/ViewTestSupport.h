// ViewTestSupport.h — what the view tests share: the view service started once
// (dictionary views, then this library's), a walk over every list of a tree
// with the element that leads to it, and the superclass test of the class
// catalogue (attribute rows are found by tests/common/TestSupport.h).
#pragma once

#include <krmwtarn/platform/repository/DSRegistration.h>
#include <krmwtarn/platform/views/DLLView.h>
#include "tests/common/TestSupport.h"
#include <krmwtarn/views/EwswtarnViews.h>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

inline void startViewService() { DLLView_init::initAll(); }

inline DLLViewList* treeOf(const char* viewName) {
    DLLViewType* type = DLLViewType::find(viewName);
    return type ? type->_get_adViewList() : nullptr;
}

inline std::vector<DLLViewElem*> elementsOf(const DLLViewList* list) {
    std::vector<DLLViewElem*> out;
    if (list)
        for (void* item : list->elements) out.push_back(static_cast<DLLViewElem*>(item));
    return out;
}

inline bool isEnd(const DLLViewElem* e) {
    return std::strcmp(e->name, "adTarget") == 0 || std::strcmp(e->name, "adSource") == 0;
}

// Calls `visit(list, via)` for every list of the tree, parents first; `via` is
// the element whose nested list it is (null for the root).
inline void forEachList(const DLLViewList* root,
                        const std::function<void(const DLLViewList*, const DLLViewElem*)>& visit,
                        const DLLViewElem* via = nullptr) {
    if (!root) return;
    visit(root, via);
    for (DLLViewElem* e : elementsOf(root)) forEachList(e->list, visit, e);
}

// True when `className` is `base` or lies below it on the superclass line.
inline bool isKindOfClass(const char* className, const char* base) {
    for (const _classStruct* c = DSRegistration::findClass(className); c;
         c = c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr)
        if (std::strcmp(c->className, base) == 0) return true;
    return false;
}

class ViewServiceTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { startViewService(); }
};
