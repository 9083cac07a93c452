// DSModelCollection.cpp — cursor and ordering operations of the handle
// collection, and what a role's collection admits.
#include <krmwtarn/platform/repository/DSModelCollection.h>

#include <krmwtarn/platform/common/KVException.h>
#include <krmwtarn/platform/repository/ADLink.h>

#include <cassert>
#include <cstdio>

ADObject* DSModelCollection::first() noexcept {
    cursor_ = items_.empty() ? -1 : 0;
    return at(cursor_);
}

ADObject* DSModelCollection::next() noexcept {
    if (cursor_ >= count()) return nullptr;
    ++cursor_;
    if (cursor_ >= count()) {
        cursor_ = count();
        return nullptr;
    }
    return at(cursor_);
}

long DSModelCollection::indexOf() const noexcept { return (cursor_ >= 0 && cursor_ < count()) ? cursor_ : -1; }

long DSModelCollection::indexOf(const ADObject* element) const noexcept {
    if (!element) return -1;
    for (long i = 0; i < count(); ++i)
        if (items_[static_cast<size_t>(i)] == *element) return i;
    return -1;
}

ADObject* DSModelCollection::at(long position) noexcept {
    if (position < 0 || position >= count()) return nullptr;
    return &items_[static_cast<size_t>(position)];
}

// A role holds links of its class in which its owner stands at the role's
// end, each once; the link rules walk it on that trust (the duplicate test
// reads every member's target). The owner is found through the link: its end
// on the role's side must own this very collection.
void DSModelCollection::admit(const ADObject& element) const {
    if (!role_) return;
    const char* linkClass = adRoleLinkClass(*role_);
    _ADObject* o = element.impl();
    if (!o || !o->isRelationshipObject() || !o->isKindOf(linkClass))
        throw new KVException("ewswtarn_", 2498, linkClass, o ? o->whoAmI() : "", role_->name);
    bool atSource = adRoleEnd(*role_) == adSource;
    auto* link = static_cast<_ADLink*>(o);
    ADObject* owner = atSource ? link->getSource() : link->getTarget();
    if (!owner || owner->isEmpty() || !role_->getter.role || (owner->impl()->*role_->getter.role)() != this)
        throw new KVException("ewswtarn_", 2499, linkClass, role_->name, atSource ? "source" : "target");
    if (long at = indexOf(&element); at >= 0) {
        char position[24];
        std::snprintf(position, sizeof position, "%ld", at);
        throw new KVException("relSameTarget", 2441, linkClass, position);
    }
}

void DSModelCollection::addFirst(const ADObject& element) { addAfter(element, -1); }

void DSModelCollection::addLast(const ADObject& element) {
    admit(element);
    items_.push_back(element);
}

void DSModelCollection::addAfter(const ADObject& element, long position) {
    admit(element);
    if (position < -1) position = -1;
    if (position >= count()) position = count() - 1;
    items_.insert(static_cast<std::size_t>(position + 1), element);
    if (cursor_ > position) ++cursor_;
}

void DSModelCollection::moveAfter(const ADObject* after) {
    long from = indexOf();
    if (from < 0) return;
    if (after && (indexOf(after) < 0 || indexOf(after) == from)) return;
    ADObject moving = std::move(items_[static_cast<size_t>(from)]);
    items_.erase(static_cast<std::size_t>(from));
    long to = after ? indexOf(after) + 1 : 0;
    assert(to >= 0 && to <= count());
    items_.insert(static_cast<std::size_t>(to), std::move(moving));
    cursor_ = to;
}

void DSModelCollection::remove() {
    long at = indexOf();
    if (at < 0) return;
    items_.erase(static_cast<std::size_t>(at));
    cursor_ = at - 1;
}

void DSModelCollection::drainInto(std::vector<ADObject>& into) {
    for (ADObject& h : items_) into.push_back(std::move(h));
    items_.clear();
    cursor_ = -1;
}
