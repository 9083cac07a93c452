// DSModelCollection.cpp — cursor and ordering operations of the handle collection.
#include <krmwtarn/platform/repository/DSModelCollection.h>

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

long DSModelCollection::indexOf() const noexcept {
    return (cursor_ >= 0 && cursor_ < count()) ? cursor_ : -1;
}

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

void DSModelCollection::addFirst(const ADObject& element) { addAfter(element, -1); }

void DSModelCollection::addLast(const ADObject& element) { items_.push_back(element); }

void DSModelCollection::addAfter(const ADObject& element, long position) {
    if (position < -1) position = -1;
    if (position >= count()) position = count() - 1;
    items_.insert(items_.begin() + (position + 1), element);
    if (cursor_ > position) ++cursor_;
}

void DSModelCollection::moveAfter(const ADObject* after) {
    long from = indexOf();
    if (from < 0) return;
    if (after && (indexOf(after) < 0 || indexOf(after) == from)) return;
    ADObject moving = std::move(items_[static_cast<size_t>(from)]);
    items_.erase(items_.begin() + from);
    long to = after ? indexOf(after) + 1 : 0;
    items_.insert(items_.begin() + to, std::move(moving));
    cursor_ = to;
}

void DSModelCollection::remove() {
    long at = indexOf();
    if (at < 0) return;
    items_.erase(items_.begin() + at);
    cursor_ = at - 1;
}

void DSModelCollection::drainInto(std::vector<ADObject>& into) {
    for (ADObject& h : items_) into.push_back(std::move(h));
    items_.clear();
    cursor_ = -1;
}
