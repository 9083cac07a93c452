// ViewCatalogueTest.cpp — the 38 trees read through their records and compared
// with the catalogue: size rows, top levels, class sets, delegations, the
// outlines of the views given whole, and the deliberate particulars (the HISAM
// variant's three differences, the index view's self-reference, aliases).
#include "tests/views/ExpectedViews.h"
#include "tests/views/ViewTestSupport.h"
#include "views/ViewOutline.h"

#include <set>

namespace {

std::vector<std::string> topLevelOf(const DLLViewList* root) {
    std::vector<std::string> out;
    for (const DLLViewElem* e : elementsOf(root)) {
        std::string line = e->name;
        if (e->list) {
            line += std::string(" → ") + e->list->className;
            for (const DLLViewElem* end : elementsOf(e->list)) {
                if (std::strcmp(end->name, "adTarget") != 0) continue;
                if (end->list) line += std::string(" → ") + end->list->className;
                if (end->viewType) line += std::string(" → view ") + end->viewType->name();
            }
        } else if (std::strcmp(e->alias, e->name) != 0) {
            line += std::string(" as ") + e->alias;
        }
        out.push_back(line);
    }
    return out;
}

std::set<std::string> classesOf(const DLLViewList* root) {
    std::set<std::string> out;
    forEachList(root, [&](const DLLViewList* list, const DLLViewElem*) { out.insert(list->className); });
    return out;
}

std::map<std::string, int> delegationsOf(const DLLViewList* root) {
    std::map<std::string, int> out;
    forEachList(root, [&](const DLLViewList* list, const DLLViewElem*) {
        for (const DLLViewElem* e : elementsOf(list))
            if (e->viewType) ++out[e->viewType->name()];
    });
    return out;
}

TEST_F(ViewServiceTest, EveryViewHasItsSizeRowTopLevelClassesAndDelegations) {
    ASSERT_EQ(expectedViews.size(), static_cast<std::size_t>(ewswtarnViewCount));
    int delegating = 0;
    for (std::size_t i = 0; i < expectedViews.size(); ++i) {
        const ExpectedView& x = expectedViews[i];
        SCOPED_TRACE(x.name);
        ASSERT_STREQ(ewswtarnViews[i].name, x.name);
        const DLLViewList* root = treeOf(x.name);
        ASSERT_NE(root, nullptr);
        EXPECT_STREQ(root->className, x.rootClass);
        const ViewShape shape = measureView(root);
        EXPECT_EQ(shape.lists, x.lists);
        EXPECT_EQ(shape.elements, x.elements);
        EXPECT_EQ(shape.depth, x.depth);
        EXPECT_EQ(shape.delegating, x.delegating);
        EXPECT_EQ(delegationsOf(root), x.delegations);
        if (!x.topLevel.empty()) {
            EXPECT_EQ(topLevelOf(root), x.topLevel);
        }
        if (!x.classes.empty()) {
            std::set<std::string> expected(x.classes.begin(), x.classes.end());
            expected.insert(x.rootClass);
            EXPECT_EQ(classesOf(root), expected);
        }
        if (x.outline) {
            EXPECT_EQ(viewOutline(root), x.outline);
        }
        delegating += shape.delegating;
    }
    EXPECT_EQ(delegating, 182);
}

// Differences between two trees, list by list and element by element.
void diff(const DLLViewList* a, const DLLViewList* b, const std::string& at, std::vector<std::string>& out) {
    if (!a || !b) {
        if (a != b) out.push_back(at + ": a list on one side only");
        return;
    }
    if (std::strcmp(a->className, b->className) != 0)
        out.push_back(at + ": " + a->className + " against " + b->className);
    const std::vector<DLLViewElem*> ea = elementsOf(a), eb = elementsOf(b);
    for (std::size_t i = 0; i < std::max(ea.size(), eb.size()); ++i) {
        if (i >= ea.size() || i >= eb.size()) {
            out.push_back(at + ": " + (i < ea.size() ? ea[i] : eb[i])->name + " on one side only");
            continue;
        }
        const DLLViewElem* x = ea[i];
        const DLLViewElem* y = eb[i];
        if (std::strcmp(x->name, y->name) != 0 || std::strcmp(x->alias, y->alias) != 0 || x->flags != y->flags ||
            x->viewType != y->viewType)
            out.push_back(at + ": " + x->name + " against " + y->name);
        else
            diff(x->list, y->list, at + "/" + x->name, out);
    }
}

TEST_F(ViewServiceTest, HisamComplexDiffersFromItsSiblingsInThreePoints) {
    std::vector<std::string> hidamHdam, hidamHisam;
    diff(treeOf("CVQHIDAMDBDCOMPLEX"), treeOf("CVQHDAMDBDCOMPLEX"), "", hidamHdam);
    diff(treeOf("CVQHIDAMDBDCOMPLEX"), treeOf("CVQHISAMDBDCOMPLEX"), "", hidamHisam);
    EXPECT_EQ(hidamHdam, (std::vector<std::string>{"/dliAccess/adTarget: DSDBDhidam against DSDBDhdam"}));
    EXPECT_EQ(hidamHisam, (std::vector<std::string>{"/dliAccess/adTarget: DSDBDhidam against DSDBDaccess",
                                                    "/dliAccess/adTarget: frequency on one side only",
                                                    ": versionString on one side only"}));
}

TEST_F(ViewServiceTest, IndexViewExpandsTheSharingDbdByItself) {
    std::vector<std::string> selfReferences;
    std::function<void(const DLLViewList*, std::string)> walk = [&](const DLLViewList* list, std::string path) {
        for (const DLLViewElem* e : elementsOf(list)) {
            const std::string here = path + "/" + e->name + (e->list ? std::string(":") + e->list->className : "");
            if (e->viewType == v_CVQINDEXDBD) selfReferences.push_back(here);
            if (e->list) walk(e->list, here);
        }
    };
    walk(treeOf("CVQINDEXDBD"), "");
    EXPECT_EQ(selfReferences, (std::vector<std::string>{"/dliAccess:DSDefinedByAccess/adTarget:DSDBDindex"
                                                        "/sharingDBDs:DSSharesWith/adSource:DSDBDindex"
                                                        "/containingDBD:DSDefinedByAccess/adSource"}));
}

TEST_F(ViewServiceTest, QueryViewsKeepTheirAliasesDistinct) {
    for (const EwswtarnView& v : ewswtarnViews) {
        if (std::strncmp(v.name, "CVQ", 3) != 0) continue;
        std::multiset<std::string> aliases;
        forEachList(treeOf(v.name), [&](const DLLViewList* list, const DLLViewElem*) {
            for (const DLLViewElem* e : elementsOf(list))
                if (!e->list && !e->viewType) aliases.insert(e->alias);
        });
        for (const std::string& a : aliases) EXPECT_EQ(aliases.count(a), 1u) << v.name << ": " << a;
    }
}

TEST_F(ViewServiceTest, GraphViewNamesReferringDbdsByOneNumberedAlias) {
    int adName1 = 0;
    forEachList(treeOf("CORVIADBD"), [&](const DLLViewList* list, const DLLViewElem*) {
        for (const DLLViewElem* e : elementsOf(list)) {
            if (std::strcmp(e->alias, "adName1") != 0) continue;
            ++adName1;
            EXPECT_STREQ(e->name, "adName");
            EXPECT_STREQ(list->className, "DSDBD");
        }
    });
    EXPECT_EQ(adName1, 7);
}

}  // namespace
