// DLLViewExpansion.cpp — the walk of a view tree over an object graph.
#include <krmwtarn/platform/views/DLLViewExpansion.h>

#include <krmwtarn/platform/common/FlatTable.h>
#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/ADReflection.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <typeinfo>

namespace {
bool isEndElement(const DLLViewElem* e, bool* target) {
    if (std::strcmp(e->name, "adTarget") == 0) {
        *target = true;
        return true;
    }
    if (std::strcmp(e->name, "adSource") == 0) {
        *target = false;
        return true;
    }
    return false;
}

// The attribute rows the walk has found, by the object's class and the element
// that named them: a class's rows are searched by name once per expansion
// rather than once per object.
class RowCache {
public:
    const ADAttributeEntry* row(_ADObject* o, const DLLViewElem* e) {
        const std::type_info* cls = &typeid(*o);
        std::uint64_t h = krflat::pointerHash(cls) ^ (krflat::pointerHash(e) >> 1);
        auto same = [&](const Slot& s) { return s.cls == cls && s.element == e; };
        if (const Slot* s = slots_.find(h, same)) return s->row;
        const ADAttributeEntry* found = DLLView_findRow(o, e->name);
        slots_.insert(h, same, Slot{cls, e, found, h});
        return found;
    }

private:
    struct Slot {
        const std::type_info* cls = nullptr;  // null: free
        const DLLViewElem* element = nullptr;
        const ADAttributeEntry* row = nullptr;
        std::uint64_t hash = 0;
    };
    struct Traits {
        static bool isFree(const Slot& s) noexcept { return !s.cls; }
        static std::uint64_t hashOf(const Slot& s) noexcept { return s.hash; }
    };
    krflat::FlatTable<Slot, Traits> slots_;
};

// Whether a link list names an end of its link (adSource or adTarget).
bool listsEnd(const DLLViewList* list) {
    bool target;
    for (int i = 0; i < list->count(); ++i)
        if (list->element(i) && isEndElement(list->element(i), &target)) return true;
    return false;
}

class Expander {
public:
    DLLViewNode object(const DLLViewList* list, _ADObject* o) {
        DLLViewNode node;
        node.object = o;
        node.list = list;
        for (int i = 0; i < list->count(); ++i) {
            const DLLViewElem* e = list->element(i);
            if (!e || !e->name) continue;
            bool target = false;
            if (isEndElement(e, &target)) {
                end(node, e, o, target);
            } else if (e->list) {
                role(node, e, o);
            } else {
                const ADAttributeEntry* row = rows_.row(o, e);
                if (!row || !adIsAttributeRow(*row) || !row->getter.str) continue;
                DLLViewEntry entry;
                entry.kind = DLLViewEntry::Value;
                entry.element = e;
                entry.value = DLLView_readValue(o, *row);
                node.entries.push_back(std::move(entry));
            }
        }
        return node;
    }

    DLLViewNode delegate(DLLViewType* view, _ADObject* o) {
        DLLViewNode node;
        DLLViewList* root = view ? view->_get_adViewList() : nullptr;
        bool active = std::find(path_.begin(), path_.end(), view) != path_.end();
        if (!root || active || !o->isKindOf(root->className)) {
            node.object = o;  // identity only
            node.delegated = view;
            return node;
        }
        path_.push_back(view);
        node = object(root, o);
        node.delegated = view;
        path_.pop_back();
        return node;
    }

    std::vector<DLLViewType*> path_;

private:
    RowCache rows_;

    void end(DLLViewNode& node, const DLLViewElem* e, _ADObject* o, bool target) {
        if (!o->isRelationshipObject()) return;
        auto* link = static_cast<_ADLink*>(o);
        ADObject* far = target ? link->getTarget() : link->getSource();
        if (!far || far->isEmpty()) return;
        DLLViewEntry entry;
        entry.kind = DLLViewEntry::End;
        entry.element = e;
        if (e->viewType || (e->flags & 1)) {
            entry.items.push_back(delegate(e->viewType, far->impl()));
        } else if (e->list && std::strcmp(far->impl()->whoAmI(), e->list->className) == 0) {
            entry.items.push_back(object(e->list, far->impl()));
        } else {
            return;
        }
        node.entries.push_back(std::move(entry));
    }

    void role(DLLViewNode& node, const DLLViewElem* e, _ADObject* o) {
        const ADAttributeEntry* row = rows_.row(o, e);
        if (!row || !adIsRoleRow(*row) || !row->getter.role) return;
        DLLViewEntry entry;
        entry.kind = DLLViewEntry::Role;
        entry.element = e;
        const bool needsEnd = listsEnd(e->list);
        for (const ADObject& h : *(o->*row->getter.role)()) {
            if (h.isEmpty() || std::strcmp(h.impl()->whoAmI(), e->list->className) != 0) continue;
            DLLViewNode linkNode = object(e->list, h.impl());
            // A link whose far end the list does not take is not part of this copy of the role.
            bool hasEnd = std::any_of(linkNode.entries.begin(), linkNode.entries.end(),
                                      [](const DLLViewEntry& x) { return x.kind == DLLViewEntry::End; });
            if (needsEnd && !hasEnd) continue;
            entry.items.push_back(std::move(linkNode));
        }
        if (!entry.items.empty()) node.entries.push_back(std::move(entry));
    }
};
}  // namespace

const ADAttributeEntry* DLLView_findRow(_ADObject* object, const char* name) { return adFindRow(object, name); }

// A string's text or null; a char's one character, or an empty text for none;
// a number for the rest. A type the list does not know reads as null.
DLLViewValue DLLView_readValue(_ADObject* o, const ADAttributeEntry& row) {
    DLLViewValue v;
    v.type = row.type;
    v.isNull = false;
    bool known = adVisitValue(o, row, [&v](auto tr, auto value) {
        using T = decltype(tr);
        if constexpr (T::form == ADValueForm::Text) {
            v.isNull = value == nullptr;
            if (value) v.text = value;
        } else if constexpr (T::form == ADValueForm::Char) {
            if (value) v.text.assign(1, value);
        } else {
            v.number = value;
        }
    });
    if (!known) v.isNull = true;
    return v;
}

DLLViewNode DLLView_expand(DLLViewType* view, _ADObject* root) {
    Expander x;
    if (!view || !root) return DLLViewNode{};
    DLLViewList* list = view->_get_adViewList();
    if (!list || !root->isKindOf(list->className)) {
        DLLViewNode none;
        none.object = root;
        return none;
    }
    x.path_.push_back(view);
    DLLViewNode node = x.object(list, root);
    node.delegated = view;
    return node;
}

std::size_t DLLView_nodeCount(const DLLViewNode& node) {
    std::size_t n = 1;
    for (const DLLViewEntry& e : node.entries)
        for (const DLLViewNode& item : e.items) n += DLLView_nodeCount(item);
    return n;
}
