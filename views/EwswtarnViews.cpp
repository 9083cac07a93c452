// EwswtarnViews.cpp — the 38 view-type variables and tree-building functions,
// expanded from ViewCatalog.def over the trees' rows, and the registration
// object. Each tree's outline is flattened and checked at compile time.
#include "views/EwswtarnViews.h"

#include "platform/views/DictionaryViews.h"
#include "views/ViewTreeBuilder.h"
#include "views/trees/GraphViews.h"
#include "views/trees/QueryViews.h"

#define EWSWTARN_VIEW(NAME, ROOT) DLLViewType* v_##NAME = nullptr;
#include "views/ViewCatalog.def"

namespace {
#define EWSWTARN_VIEW(NAME, ROOT)                                                                          \
    constexpr auto flat_##NAME = viewrows::flatten<viewrows::flatSize(viewtrees::NAME)>(viewtrees::NAME); \
    static_assert(viewrows::wellFormed(flat_##NAME), "the outline of " #NAME " is not well formed");
#include "views/ViewCatalog.def"
}  // namespace

#define EWSWTARN_VIEW(NAME, ROOT) \
    void _init_##NAME(DLLViewType* view) { buildViewTree(view, #ROOT, flat_##NAME.data(), flat_##NAME.size()); }
#include "views/ViewCatalog.def"

const EwswtarnView ewswtarnViews[ewswtarnViewCount] = {
#define EWSWTARN_VIEW(NAME, ROOT) {#NAME, &v_##NAME, _init_##NAME, #ROOT},
#include "views/ViewCatalog.def"
};

init_ewswtarn_views::init_ewswtarn_views() : DLLView_init() {}

void init_ewswtarn_views::init() {
#define EWSWTARN_VIEW(NAME, ROOT) v_##NAME = new (std::nothrow) DLLViewType(#NAME, "", _init_##NAME);
#include "views/ViewCatalog.def"
}
