// ExpansionTest.cpp — a client expanding views as the repository client does:
// a delegating element is replaced by the tree of the view it names, except
// where that view is already being expanded (the index view's self-reference),
// where the expansion stops.
#include "platform/views/DictionaryViews.h"
#include "tests/views/ViewTestSupport.h"
#include "views/ViewOutline.h"

namespace {

struct Expansion {
    int elements = 0;            // elements of the expanded tree
    std::vector<std::string> stops;  // views met again while being expanded
};

void expand(DLLViewType* view, std::vector<DLLViewType*>& active, Expansion& out) {
    active.push_back(view);
    forEachList(view->_get_adViewList(), [&](const DLLViewList* list, const DLLViewElem*) {
        for (const DLLViewElem* e : elementsOf(list)) {
            ++out.elements;
            if (!e->viewType) continue;
            if (std::find(active.begin(), active.end(), e->viewType) != active.end())
                out.stops.push_back(e->viewType->name());
            else
                expand(e->viewType, active, out);
        }
    });
    active.pop_back();
}

Expansion expanded(const char* name) {
    Expansion out;
    std::vector<DLLViewType*> active;
    expand(DLLViewType::find(name), active, out);
    return out;
}

int size(DLLViewType* view) { return measureView(view->_get_adViewList()).elements; }

TEST_F(ViewServiceTest, ExpansionStopsWhereAViewIsAlreadyBeingExpanded) {
    const Expansion index = expanded("CVQINDEXDBD");
    EXPECT_EQ(index.stops, (std::vector<std::string>{"CVQINDEXDBD"}));
    EXPECT_EQ(index.elements, size(v_CVQINDEXDBD) + size(v_CVQDATAELEMENT) + 2 * size(v_CVQDATASTRUCTURE));
}

TEST_F(ViewServiceTest, PsbViewsTakeTheirPcbsOverFromThePcbViews) {
    const Expansion rename = expanded("CVRENAMEPSB");
    EXPECT_TRUE(rename.stops.empty());
    EXPECT_EQ(rename.elements, size(v_CVRENAMEPSB) + size(v_CVRENAMEPCB));

    const Expansion graph = expanded("CORVIAPSB");
    EXPECT_TRUE(graph.stops.empty());
    EXPECT_EQ(graph.elements,
              size(v_CORVIAPSB) + size(v_CORVIAPCB) + size(v_CORVIADEALIAS) + 4 * size(v_CORVIADSALIAS));
}

}  // namespace
