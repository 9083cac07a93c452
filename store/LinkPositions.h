// LinkPositions.h — the stored positions of live links in their source's and
// target's roles, by link: what lets a link retrieved later go to its stored
// place among links that are already there.
#pragma once

#include <krmwtarn/platform/common/FlatTable.h>

#include <array>
#include <cstddef>
#include <cstdint>

class _ADObject;

namespace krstore {

class LinkPositions {
public:
    using Positions = std::array<long, 2>;  // at the source end, at the target end

private:
    struct Slot {
        const _ADObject* link = nullptr;
        Positions at{};
    };
    struct Traits {
        static bool isFree(const Slot& s) noexcept { return !s.link; }
        static std::uint64_t hashOf(const Slot& s) noexcept { return krflat::pointerHash(s.link); }
    };
    static auto is(const _ADObject* link) noexcept {
        return [link](const Slot& s) { return s.link == link; };
    }

public:
    const Positions* find(const _ADObject* link) const noexcept {
        const Slot* s = table_.find(krflat::pointerHash(link), is(link));
        return s ? &s->at : nullptr;
    }
    void set(const _ADObject* link, const Positions& at) {
        auto [slot, fresh] = table_.insert(krflat::pointerHash(link), is(link), Slot{link, at});
        if (!fresh) slot->at = at;
    }
    void erase(const _ADObject* link) noexcept { table_.erase(krflat::pointerHash(link), is(link)); }
    void reserve(std::size_t n) { table_.reserve(n); }
    std::size_t size() const noexcept { return table_.size(); }
    // Brings a link's entry toward the cache ahead of find() or set().
    void prefetch(const _ADObject* link) const noexcept { table_.prefetch(krflat::pointerHash(link)); }

private:
    krflat::FlatTable<Slot, Traits> table_;
};

}  // namespace krstore
