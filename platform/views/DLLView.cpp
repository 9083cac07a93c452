// DLLView.cpp — the view service: record allocation, loading a list's element
// chain, view types with their registry and lazy build, and the registration
// objects run by initAll.
#include <krmwtarn/platform/views/DLLView.h>

#include <krmwtarn/platform/views/DictionaryViews.h>

#include <algorithm>
#include <cstring>

namespace {
DLLViewAllocGate allocGate = nullptr;

std::vector<DLLViewType*>& viewTypes() {
    static std::vector<DLLViewType*> types;
    return types;
}

std::vector<DLLView_init*>& registrations() {
    static std::vector<DLLView_init*> objects;
    return objects;
}
}  // namespace

DLLViewAllocGate DLLView_setAllocGate(DLLViewAllocGate gate) {
    DLLViewAllocGate previous = allocGate;
    allocGate = gate;
    return previous;
}

void* DLLView_allocate(std::size_t size) noexcept {
    if (allocGate && !allocGate()) return nullptr;
    return ::operator new(size, std::nothrow);
}

void DLLViewList::loadViewElems(DLLViewElem* first) {
    int n = 0;
    for (DLLViewElem* e = first; e; e = e->next) ++n;
    elements.reserve(elements.count() + n);
    for (DLLViewElem* e = first; e; e = e->next) elements.add(e);
}

void DLLView_releaseTree(DLLViewList* root) {
    if (!root) return;
    for (void* item : root->elements) {
        DLLViewElem* e = static_cast<DLLViewElem*>(item);
        DLLView_releaseTree(e->list);
        delete e;
    }
    delete root;
}

DLLViewType::DLLViewType(const char* name, const char* secondName, BuildFunction build)
    : name_(name), secondName_(secondName), build_(build), root_(nullptr), built_(false) {
    viewTypes().push_back(this);
}

DLLViewType::~DLLViewType() {
    auto& types = viewTypes();
    types.erase(std::remove(types.begin(), types.end(), this), types.end());
    DLLView_releaseTree(root_);
}

void DLLViewType::_set_adViewList(DLLViewList* root) {
    if (root_ != root) DLLView_releaseTree(root_);
    root_ = root;
    built_ = true;
}

DLLViewList* DLLViewType::_get_adViewList() {
    if (!built_) {
        // Marked first: a tree that delegates to its own view type reads only
        // the view type, never its list, so building cannot recurse.
        built_ = true;
        if (build_) build_(this);
    }
    return root_;
}

DLLViewType* DLLViewType::find(const char* name) {
    if (!name) return nullptr;
    for (DLLViewType* t : viewTypes())
        if (t->name_ && std::strcmp(t->name_, name) == 0) return t;
    return nullptr;
}

const std::vector<DLLViewType*>& DLLViewType::all() { return viewTypes(); }

DLLView_init::DLLView_init() : initialised_(false) { registrations().push_back(this); }

DLLView_init::~DLLView_init() {
    auto& objects = registrations();
    objects.erase(std::remove(objects.begin(), objects.end(), this), objects.end());
}

void DLLView_init::init() {}

void DLLView_init::initAll() {
    DLLView_registerDictionaryViews();
    // By index: an init() may construct further registration objects.
    for (std::size_t i = 0; i < registrations().size(); ++i) {
        DLLView_init* object = registrations()[i];
        if (object->initialised_) continue;
        object->initialised_ = true;
        object->init();
    }
}

// The records' constructors. Names and aliases point to static text and are not
// copied; a null alias is taken as the name.
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
