// EwswtarnViews.h — the views this library exports: the 38 view-type variables
// (v_ and the view name), their tree-building functions (_init_ and the view
// name), the registration class that creates the view types, and a table of the
// views in registration order for tools and tests.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/views/DLLView.h>

#define EWSWTARN_VIEW(NAME, ROOT)              \
    extern KRMWTARN_API DLLViewType* v_##NAME; \
    KRMWTARN_API void _init_##NAME(DLLViewType* view);
#include <krmwtarn/views/ViewCatalog.def>

// The library's view registration: init() creates the 38 view types in
// registration order and stores each in its variable (left null when the
// allocation fails). The trees are built later, by the view service.
class KRMWTARN_API init_ewswtarn_views : public DLLView_init {
public:
    init_ewswtarn_views();

protected:
    void init() override;
};

struct KRMWTARN_API EwswtarnView {
    const char* name;
    DLLViewType** variable;
    void (*build)(DLLViewType*);
    const char* rootClass;
};

// The rows of ViewCatalog.def.
constexpr int ewswtarnViewCount = 0
#define EWSWTARN_VIEW(NAME, ROOT) +1
#include <krmwtarn/views/ViewCatalog.def>
    ;
extern KRMWTARN_API const EwswtarnView ewswtarnViews[ewswtarnViewCount];
