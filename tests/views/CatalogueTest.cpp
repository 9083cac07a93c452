// CatalogueTest.cpp — every registered view checked against the class
// catalogue: each name exists on its list's class (or a superclass), a role
// element's list names that role's link class, an end element's list names the
// class at that end (or a subclass), delegations point at registered views whose
// root fits that end, and flag 1 stands exactly on the delegating elements.
#include "tests/views/ViewTestSupport.h"

#include <algorithm>
#include <set>
#include <string>

namespace {

std::string where(const DLLViewType* view, const DLLViewList* list, const DLLViewElem* e) {
    return std::string(view->name()) + ": " + list->className + "." + e->name;
}

std::vector<std::string> problemsOf(DLLViewType* view) {
    std::vector<std::string> problems;
    forEachList(view->_get_adViewList(), [&](const DLLViewList* list, const DLLViewElem*) {
        if (!DSRegistration::findClass(list->className)) {
            problems.push_back(std::string(view->name()) + ": unknown class " + list->className);
            return;
        }
        for (const DLLViewElem* e : elementsOf(list)) {
            const bool delegating = e->viewType != nullptr;
            if ((e->flags == 1) != delegating || (e->flags != 0 && e->flags != 1))
                problems.push_back(where(view, list, e) + ": flag " + std::to_string(e->flags));
            if (!e->alias) problems.push_back(where(view, list, e) + ": null alias");
            if (isEnd(e)) {
                const bool atTarget = std::strcmp(e->name, "adTarget") == 0;
                const ADAttributeEntry* endRow = findRow(list->className, atTarget ? "target" : "source");
                if (!isKindOfClass(list->className, "ADLink") || !endRow) {
                    problems.push_back(where(view, list, e) + ": not a link's end");
                    continue;
                }
                const char* endClass = endRow->type;
                const char* reached = nullptr;
                if (delegating) {
                    if (std::find(DLLViewType::all().begin(), DLLViewType::all().end(), e->viewType) ==
                        DLLViewType::all().end()) {
                        problems.push_back(where(view, list, e) + ": delegates to an unregistered view");
                        continue;
                    }
                    reached = e->viewType->_get_adViewList()->className;
                } else if (e->list) {
                    reached = e->list->className;
                } else {
                    problems.push_back(where(view, list, e) + ": end without list or view");
                    continue;
                }
                if (!isKindOfClass(reached, endClass))
                    problems.push_back(where(view, list, e) + ": " + reached + " is no " + endClass);
                continue;
            }
            const ADAttributeEntry* row = findRow(list->className, e->name);
            if (!row) {
                problems.push_back(where(view, list, e) + ": no such attribute or role");
            } else if (adIsRoleRow(*row)) {
                if (!e->list || std::strcmp(e->list->className, adRoleLinkClass(*row)) != 0)
                    problems.push_back(where(view, list, e) + ": role's list is not " + adRoleLinkClass(*row));
            } else if (e->list || delegating) {
                problems.push_back(where(view, list, e) + ": attribute with a nested list or view");
            }
        }
    });
    return problems;
}

TEST_F(ViewServiceTest, EveryRegisteredViewAgreesWithTheClassCatalogue) {
    std::vector<std::string> problems;
    for (DLLViewType* view : DLLViewType::all()) {
        std::vector<std::string> p = problemsOf(view);
        problems.insert(problems.end(), p.begin(), p.end());
    }
    // The one deliberate exception: the HISAM variant's access list carries the
    // segment attribute frequency.
    EXPECT_EQ(problems,
              (std::vector<std::string>{"CVQHISAMDBDCOMPLEX: DSDBDaccess.frequency: no such attribute or role"}));
}

// A link list entered over a role names the far end once; a link reached as
// the end of another link names both of its ends. The one exception is the
// alternate-structure link, kept without its structures.
TEST_F(ViewServiceTest, LinkListsNameTheirEndsByHowTheyAreEntered) {
    for (const EwswtarnView& v : ewswtarnViews) {
        forEachList((*v.variable)->_get_adViewList(), [&](const DLLViewList* list, const DLLViewElem* via) {
            if (!via || !isKindOfClass(list->className, "ADLink")) return;
            int ends = 0;
            for (const DLLViewElem* e : elementsOf(list)) ends += isEnd(e);
            const int expected = isEnd(via) ? 2 : std::strcmp(list->className, "DSHasAlternate") == 0 ? 0 : 1;
            EXPECT_EQ(ends, expected) << v.name << ": " << via->name << " → " << list->className;
        });
    }
}

}  // namespace
