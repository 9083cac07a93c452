// ViewCatalogueTest.cpp — the deliberate particulars of the trees, read through
// their records (OutlineTest pins every tree whole): the HISAM variant's three
// differences, the index view's self-reference, the query views' distinct
// aliases and the graph views' numbered alias for referring DBDs.
#include "tests/views/ViewTestSupport.h"

#include <algorithm>
#include <set>

namespace {

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
