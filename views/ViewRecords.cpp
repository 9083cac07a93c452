// ViewRecords.cpp — the constructors of the view-tree records that this library
// builds its trees with. Names and aliases point to static text and are not
// copied; a null alias is taken as the name.
#include "platform/views/DLLView.h"

DLLViewElem::DLLViewElem(DLLViewElem* next, const char* name, long flags, const char* alias)
    : name(name), alias(alias ? alias : name), flags(flags), list(nullptr), viewType(nullptr), next(next) {}

DLLViewElem::DLLViewElem(DLLViewElem* next, const char* name, long flags, DLLViewList* list, const char* alias)
    : name(name), alias(alias ? alias : name), flags(flags), list(list), viewType(nullptr), next(next) {}

DLLViewElem::DLLViewElem(DLLViewElem* next, const char* name, long flags, DLLViewType* view, const char* alias)
    : name(name), alias(alias ? alias : name), flags(flags), list(nullptr), viewType(view), next(next) {}

DLLViewList::DLLViewList(const char* className, DLLViewElem* first, long flags)
    : className(className), flags(flags), elements(0) {
    if (first) loadViewElems(first);
}
