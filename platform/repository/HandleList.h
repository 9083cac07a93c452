// HandleList.h — the elements of a handle collection: an array of handles with
// room for one handle inside the list itself. Most roles hold one link or none
// (a field's segment, a segment's parent, a PCB's type), so they take no heap
// block of their own; longer roles grow on the heap as a vector would. 16 bytes.
#pragma once

#include <krmwtarn/platform/repository/ADObject.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

class HandleList {
public:
    HandleList() noexcept {}
    HandleList(const HandleList&) = delete;
    HandleList& operator=(const HandleList&) = delete;
    ~HandleList() {
        clear();
        if (onHeap()) ::operator delete(heap_);
    }

    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    ADObject* data() noexcept { return onHeap() ? heap_ : std::launder(reinterpret_cast<ADObject*>(inside_)); }
    const ADObject* data() const noexcept {
        return onHeap() ? heap_ : std::launder(reinterpret_cast<const ADObject*>(inside_));
    }
    ADObject& operator[](std::size_t i) noexcept { return data()[i]; }
    const ADObject& operator[](std::size_t i) const noexcept { return data()[i]; }
    const ADObject* begin() const noexcept { return data(); }
    const ADObject* end() const noexcept { return data() + size_; }
    ADObject* begin() noexcept { return data(); }
    ADObject* end() noexcept { return data() + size_; }

    // Puts the handle at position `at` (0..size), the later ones move up.
    void insert(std::size_t at, ADObject value) {
        if (size_ == capacity_) grow();
        ADObject* d = data();
        new (d + size_) ADObject();
        for (std::size_t i = size_; i > at; --i) d[i] = std::move(d[i - 1]);
        d[at] = std::move(value);
        ++size_;
    }
    void push_back(ADObject value) { insert(size_, std::move(value)); }
    // Takes out the handle at `at`; the later ones move down.
    void erase(std::size_t at) {
        ADObject* d = data();
        for (std::size_t i = at; i + 1 < size_; ++i) d[i] = std::move(d[i + 1]);
        d[size_ - 1].~ADObject();
        --size_;
    }
    // Drops every handle, first to last; the room stays.
    void clear() noexcept {
        ADObject* d = data();
        for (std::uint32_t i = 0; i < size_; ++i) d[i].~ADObject();
        size_ = 0;
    }

private:
    bool onHeap() const noexcept { return capacity_ > 1; }
    void grow() {
        std::uint32_t capacity = capacity_ == 1 ? 4 : capacity_ * 2;
        auto* moved = static_cast<ADObject*>(::operator new(sizeof(ADObject) * capacity));
        ADObject* d = data();
        for (std::uint32_t i = 0; i < size_; ++i) {
            new (moved + i) ADObject(std::move(d[i]));
            d[i].~ADObject();
        }
        if (onHeap()) ::operator delete(heap_);
        heap_ = moved;
        capacity_ = capacity;
    }

    union {
        alignas(ADObject) unsigned char inside_[sizeof(ADObject)];
        ADObject* heap_;
    };
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 1;
};
