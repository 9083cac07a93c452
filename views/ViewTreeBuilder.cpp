// ViewTreeBuilder.cpp — the one builder behind all of this library's trees.
// Scanning a list's rows from the last to the first creates its chain back to
// front: the last element first with next null, each earlier element with the
// one made just before as its next. The rows between a role or end row and the
// next row of its own level are its nested list, built before the element; a
// role's list class comes from the role row of the catalogue.
// A failed allocation is taken as a null node; what it leaves unreachable (the
// chain after a failed element, a failed role element's list) is freed.
#include <krmwtarn/views/ViewTreeBuilder.h>

#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/views/DLLView.h>

namespace {
void releaseChain(DLLViewElem* first) {
    while (first) {
        DLLViewElem* next = first->next;
        DLLView_releaseTree(first->list);
        delete first;
        first = next;
    }
}

DLLViewElem* linked(DLLViewElem* made, DLLViewElem* next, DLLViewList* nested = nullptr) {
    if (made) return made;
    releaseChain(next);
    DLLView_releaseTree(nested);
    return nullptr;
}
}  // namespace

const char* viewRoleLinkClass(const char* className, const char* role) {
    const ADAttributeEntry* row = adFindClassRow(className, role);
    return row && adIsRoleRow(*row) ? adRoleLinkClass(*row) : nullptr;
}

DLLViewList* buildViewList(const char* className, const viewrows::Row* rows, std::size_t begin, std::size_t end,
                           int level) {
    using viewrows::Kind;
    DLLViewElem* next = nullptr;
    std::size_t nestedEnd = end;
    for (std::size_t i = end; i-- > begin;) {
        const viewrows::Row& r = rows[i];
        if (r.level != level) continue;
        switch (r.kind) {
            case Kind::Attribute:
                next = linked(new (std::nothrow) DLLViewElem(next, r.name, 0, r.alias), next);
                break;
            case Kind::Role:
            case Kind::End: {
                const char* nestedClass = r.kind == Kind::End ? r.endClass : viewRoleLinkClass(className, r.name);
                DLLViewList* nested =
                    nestedClass ? buildViewList(nestedClass, rows, i + 1, nestedEnd, level + 1) : nullptr;
                next = linked(new (std::nothrow) DLLViewElem(next, r.name, 0, nested, r.alias), next, nested);
                break;
            }
            case Kind::Delegation:
                next = linked(new (std::nothrow) DLLViewElem(next, r.name, 1, *r.view, r.alias), next);
                break;
        }
        nestedEnd = i;
    }
    DLLViewList* list = new (std::nothrow) DLLViewList(className, next, 0);
    if (!list) releaseChain(next);
    return list;
}

void buildViewTree(DLLViewType* view, const char* rootClass, const viewrows::Outline& outline) {
    view->_set_adViewList(buildViewList(rootClass, outline.rows, 0, outline.count, 0));
}
