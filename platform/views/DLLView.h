// DLLView.h — the repository client's view service. A view tree is made of
// lists (DLLViewList: the objects of one class) and their elements (DLLViewElem:
// an attribute, a role with its nested list, or a delegation to another view
// type). A DLLViewType names a view and builds its tree on first use; the
// registration objects (DLLView_init) are how components hand in their view types.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/common/RSCollection.h>

#include <cstddef>
#include <new>
#include <vector>

class DLLViewList;
class DLLViewType;

// Components build their trees with `new (std::nothrow)` and take a null result
// as a missing node. Every view record is allocated through DLLView_allocate,
// which a test can make refuse allocations through a gate.
typedef bool (*DLLViewAllocGate)();
// Installs the gate (null: no gate); returns the one it replaces.
KRMWTARN_API DLLViewAllocGate DLLView_setAllocGate(DLLViewAllocGate gate);
// Memory for one record, or null when the gate refuses or memory is out.
KRMWTARN_API void* DLLView_allocate(std::size_t size) noexcept;

#define DLLVIEW_RECORD_ALLOCATION                                                                                  \
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return DLLView_allocate(size); } \
    static void* operator new(std::size_t size) {                                                                  \
        if (void* p = DLLView_allocate(size)) return p;                                                            \
        throw std::bad_alloc();                                                                                    \
    }                                                                                                              \
    static void operator delete(void* p) noexcept { ::operator delete(p); }

// One element of a view list. The component that builds a tree supplies the
// three constructors; the form of an element is given by which one built it.
class KRMWTARN_API DLLViewElem {
public:
    // Attribute element: nested list and view type null.
    DLLViewElem(DLLViewElem* next, const char* name, long flags, const char* alias);
    // Role element: `list` describes the objects reached over the role.
    DLLViewElem(DLLViewElem* next, const char* name, long flags, DLLViewList* list, const char* alias);
    // Delegating element: the related objects are described by `view`.
    DLLViewElem(DLLViewElem* next, const char* name, long flags, DLLViewType* view, const char* alias);
    DLLVIEW_RECORD_ALLOCATION

    const char* name;       // attribute or role name; adTarget/adSource in a link's list
    const char* alias;      // the name the client exposes the value under; never null
    long flags;             // 1 on a delegating element, else 0
    DLLViewList* list;      // nested list of a role element, else null
    DLLViewType* viewType;  // view type of a delegating element, else null
    DLLViewElem* next;      // next element of the same list, null at the end

private:
    friend class DLLViewRecords;  // the platform's own trees (data-dictionary views)
    DLLViewElem() noexcept : name(nullptr), alias(nullptr), flags(0), list(nullptr), viewType(nullptr), next(nullptr) {}
};

// One list of a view tree: the objects of one class.
class KRMWTARN_API DLLViewList {
public:
    // Stores the class name and flags; when `first` is not null, takes the chain
    // first, first->next, ... into the element collection (loadViewElems).
    DLLViewList(const char* className, DLLViewElem* first, long flags);
    DLLViewList(const DLLViewList&) = delete;
    DLLViewList& operator=(const DLLViewList&) = delete;
    DLLVIEW_RECORD_ALLOCATION

    // Appends the chain that starts at `first` to the elements, in chain order.
    void loadViewElems(DLLViewElem* first);

    int count() const { return elements.count(); }
    DLLViewElem* element(int index) const { return static_cast<DLLViewElem*>(elements.at(index)); }

    const char* className;  // model, link or platform class the list describes
    long flags;             // 0 in every tree of this repository
    RSCollection elements;  // DLLViewElem*, in chain order

private:
    friend class DLLViewRecords;
    DLLViewList() noexcept : className(nullptr), flags(0), elements(0) {}
};

// Frees a tree built from heap records: the lists and elements reachable over
// nested lists. Delegations are not followed; those trees belong to their types.
KRMWTARN_API void DLLView_releaseTree(DLLViewList* root);

// A named view type. Its tree is made by its build function, which the service
// runs with the view type as argument the first time the tree is asked for.
class KRMWTARN_API DLLViewType {
public:
    typedef void (*BuildFunction)(DLLViewType*);

    // Every view type constructed is registered, in construction order.
    DLLViewType(const char* name, const char* secondName, BuildFunction build);
    // Unregisters the view type and releases its tree.
    ~DLLViewType();
    DLLViewType(const DLLViewType&) = delete;
    DLLViewType& operator=(const DLLViewType&) = delete;
    DLLVIEW_RECORD_ALLOCATION

    const char* name() const { return name_; }
    const char* secondName() const { return secondName_; }
    BuildFunction buildFunction() const { return build_; }

    // Attaches the finished root list (called by the build function).
    void _set_adViewList(DLLViewList* root);
    // The root list; runs the build function first if it has not run yet.
    DLLViewList* _get_adViewList();
    bool isBuilt() const { return built_; }

    // The first registered view type of that name, or null.
    static DLLViewType* find(const char* name);
    // Every registered view type, in registration order.
    static const std::vector<DLLViewType*>& all();

private:
    const char* name_;
    const char* secondName_;
    BuildFunction build_;
    DLLViewList* root_;
    bool built_;
};

// Base of a component's view-registration object. The service runs init() of
// every registration object once, in the order the objects were constructed;
// init() creates the component's view types.
class KRMWTARN_API DLLView_init {
public:
    DLLView_init();
    virtual ~DLLView_init();
    DLLView_init(const DLLView_init&) = delete;
    DLLView_init& operator=(const DLLView_init&) = delete;

    // Registers the data-dictionary views (the first time only), then runs init()
    // of each registration object whose init() has not run yet, in construction
    // order. Views that a component delegates to are therefore registered before
    // that component's trees can be built.
    static void initAll();

protected:
    virtual void init();

private:
    bool initialised_;
};
