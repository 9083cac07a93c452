// FlatTable.h — an open-addressing hash table whose slots lie in one array:
// linear probing from a hash's home slot, at most half full (so a miss stays a
// probe or two), removal by shifting the following entries of the run back
// (no tombstones pile up). What a slot holds, when it is free and by which
// hash it was placed are told by `Traits`; the callers say which slot they
// look for with a match function, so a slot can hold its key or just a
// pointer to an object that holds it.
//
// Traits:  static bool isFree(const Slot&) noexcept;
//          static std::uint64_t hashOf(const Slot&) noexcept;  // of an occupied slot
// A default-made Slot is free.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace krflat {

template <class Slot, class Traits>
class FlatTable {
public:
    std::size_t size() const noexcept { return size_; }

    // The occupied slot that `match` accepts on the run of h's home, or null.
    template <class Match>
    Slot* find(std::uint64_t h, Match&& match) noexcept {
        if (size_ == 0) return nullptr;
        Slot& s = slots_[probe(h, match)];
        return Traits::isFree(s) ? nullptr : &s;
    }
    template <class Match>
    const Slot* find(std::uint64_t h, Match&& match) const noexcept {
        return const_cast<FlatTable*>(this)->find(h, std::forward<Match>(match));
    }

    // Brings h's home slot toward the cache ahead of a lookup.
    void prefetch(std::uint64_t h) const noexcept {
        if (size_ != 0) __builtin_prefetch(&slots_[h & mask_]);
    }
    // h's home slot (the table must not be empty).
    const Slot& home(std::uint64_t h) const noexcept { return slots_[h & mask_]; }

    // Puts `slot` in unless `match` accepts a slot on its run: answers the
    // slot that holds the key and whether it is the one just put in.
    template <class Match>
    std::pair<Slot*, bool> insert(std::uint64_t h, Match&& match, const Slot& slot) {
        if ((size_ + 1) * 2 > slots_.size()) rehash(slots_.empty() ? 64 : slots_.size() * 2);
        std::size_t i = probe(h, match);
        if (!Traits::isFree(slots_[i])) return {&slots_[i], false};
        slots_[i] = slot;
        ++size_;
        return {&slots_[i], true};
    }

    // Takes out the slot that `match` accepts on h's run; answers whether there was one.
    template <class Match>
    bool erase(std::uint64_t h, Match&& match) noexcept {
        if (size_ == 0) return false;
        std::size_t i = probe(h, match);
        if (Traits::isFree(slots_[i])) return false;
        // Each following entry of the run moves into the hole unless its home
        // lies cyclically after the hole (there it would become unreachable).
        for (std::size_t j = (i + 1) & mask_; !Traits::isFree(slots_[j]); j = (j + 1) & mask_) {
            std::size_t homeOfJ = Traits::hashOf(slots_[j]) & mask_;
            if (((j - homeOfJ) & mask_) >= ((j - i) & mask_)) {
                slots_[i] = slots_[j];
                i = j;
            }
        }
        slots_[i] = Slot{};
        --size_;
        return true;
    }

    // Room for `n` entries without growing.
    void reserve(std::size_t n) {
        std::size_t want = 64;
        while (want < 2 * n) want *= 2;
        if (want > slots_.size()) rehash(want);
    }
    void clear() noexcept {
        slots_.clear();
        mask_ = 0;
        size_ = 0;
    }

    template <class F>
    void each(F&& f) const {
        for (const Slot& s : slots_)
            if (!Traits::isFree(s)) f(s);
    }

private:
    template <class Match>
    std::size_t probe(std::uint64_t h, Match& match) const noexcept {
        std::size_t i = h & mask_;
        while (!Traits::isFree(slots_[i]) && !match(slots_[i])) i = (i + 1) & mask_;
        return i;
    }
    void rehash(std::size_t n) {
        std::vector<Slot> old(n);
        old.swap(slots_);
        mask_ = slots_.size() - 1;
        for (const Slot& s : old) {
            if (Traits::isFree(s)) continue;
            std::size_t i = Traits::hashOf(s) & mask_;
            while (!Traits::isFree(slots_[i])) i = (i + 1) & mask_;
            slots_[i] = s;
        }
    }

    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    std::size_t size_ = 0;
};

// A pointer's hash: the multiplier spreads the address bits that alignment
// leaves alike over the bits that pick a slot.
inline std::uint64_t pointerHash(const void* p) noexcept {
    std::uint64_t x = reinterpret_cast<std::uintptr_t>(p);
    x *= 0x9E3779B97F4A7C15ULL;
    return x ^ (x >> 29);
}

}  // namespace krflat
