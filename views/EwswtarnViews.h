// EwswtarnViews.h — the views this library exports: the 38 view-type variables
// (v_ and the view name), their tree-building functions (_init_ and the view
// name), the registration class that creates the view types, and a table of the
// views in registration order for tools and tests.
#pragma once

#include "platform/views/DLLView.h"

#define EWSWTARN_VIEW(NAME, ROOT)      \
    extern DLLViewType* v_##NAME;      \
    void _init_##NAME(DLLViewType* view);
#include "views/ViewCatalog.def"

// The library's view registration: init() creates the 38 view types in
// registration order and stores each in its variable (left null when the
// allocation fails). The trees are built later, by the view service.
class init_ewswtarn_views : public DLLView_init {
public:
    init_ewswtarn_views();

protected:
    void init() override;
};

struct EwswtarnView {
    const char* name;
    DLLViewType** variable;
    void (*build)(DLLViewType*);
    const char* rootClass;
};

// The rows of ViewCatalog.def.
constexpr int ewswtarnViewCount = 0
#define EWSWTARN_VIEW(NAME, ROOT) +1
#include "views/ViewCatalog.def"
    ;
extern const EwswtarnView ewswtarnViews[ewswtarnViewCount];
