// EwswtarnViews.cpp — the 38 view-type variables and tree-building functions,
// expanded from ViewCatalog.def over the outlines that the tree files
// (views/trees) define, and the registration object.
#include <krmwtarn/views/EwswtarnViews.h>

#include <krmwtarn/views/ViewTreeBuilder.h>
#include <krmwtarn/views/trees/Trees.h>

#define EWSWTARN_VIEW(NAME, ROOT) DLLViewType* v_##NAME = nullptr;
#include <krmwtarn/views/ViewCatalog.def>

#define EWSWTARN_VIEW(NAME, ROOT) \
    void _init_##NAME(DLLViewType* view) { buildViewTree(view, #ROOT, viewtrees::outline_##NAME); }
#include <krmwtarn/views/ViewCatalog.def>

const EwswtarnView ewswtarnViews[ewswtarnViewCount] = {
#define EWSWTARN_VIEW(NAME, ROOT) {#NAME, &v_##NAME, _init_##NAME, #ROOT},
#include <krmwtarn/views/ViewCatalog.def>
};

init_ewswtarn_views::init_ewswtarn_views() : DLLView_init() {}

void init_ewswtarn_views::init() {
#define EWSWTARN_VIEW(NAME, ROOT) v_##NAME = new (std::nothrow) DLLViewType(#NAME, "", _init_##NAME);
#include <krmwtarn/views/ViewCatalog.def>
}
