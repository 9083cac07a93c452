// RSCollection.h — the common library's ordered collection of untyped pointers:
// items are added at the end and read back by position or by iteration, always
// in insertion order. The collection does not own what its items point to.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <vector>

class KRMWTARN_API RSCollection {
public:
    // `sizeHint` is the number of items expected; 0 when unknown.
    explicit RSCollection(int sizeHint);
    RSCollection(const RSCollection&) = delete;
    RSCollection& operator=(const RSCollection&) = delete;

    void add(void* item);
    // Makes room for `n` items in all, so that adding them allocates once.
    void reserve(int n);
    int count() const { return static_cast<int>(items_.size()); }
    // The item at `index`, or null when the index is out of range.
    void* at(int index) const;

    void* const* begin() const { return items_.data(); }
    void* const* end() const { return items_.data() + items_.size(); }

private:
    std::vector<void*> items_;
};
