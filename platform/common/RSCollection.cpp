// RSCollection.cpp — the ordered pointer collection of the common library.
#include <krmwtarn/platform/common/RSCollection.h>

RSCollection::RSCollection(int sizeHint) {
    if (sizeHint > 0) items_.reserve(static_cast<std::size_t>(sizeHint));
}

void RSCollection::add(void* item) { items_.push_back(item); }

void RSCollection::reserve(int n) {
    if (n > 0) items_.reserve(static_cast<std::size_t>(n));
}

void* RSCollection::at(int index) const {
    if (index < 0 || index >= count()) return nullptr;
    return items_[static_cast<std::size_t>(index)];
}
