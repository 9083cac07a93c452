// DSRegistrar.cpp — the registry keyed by (class, object ID, context): a flat
// table of (hash, object) slots. A probe compares stored hashes first and
// touches an object's strings only when the hashes agree, so a lookup costs
// about one cache line whatever the size.
#include <krmwtarn/platform/repository/DSRegistrar.h>

#include <krmwtarn/platform/common/FlatTable.h>
#include <krmwtarn/platform/repository/ADObject.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

const char* orEmpty(const char* s) noexcept { return s ? s : ""; }

// FNV-1a over the three strings (each closed by its NUL, so ("AB","C") and
// ("A","BC") differ), finished with a multiply-xorshift so that the low bits
// that pick a slot depend on every byte.
std::uint64_t hashOf(const char* cls, const char* id, const char* ctx) noexcept {
    std::uint64_t h = 0xcbf29ce484222325ULL;
    for (const char* s : {id, cls, ctx}) {
        for (const unsigned char* p = reinterpret_cast<const unsigned char*>(orEmpty(s)); *p; ++p)
            h = (h ^ *p) * 0x100000001b3ULL;
        h = (h ^ 0xffU) * 0x100000001b3ULL;
    }
    h ^= h >> 33;
    h *= 0xff51afd7ed558ccdULL;
    h ^= h >> 33;
    return h;
}

bool sameKey(const _ADObject* o, const char* cls, const char* id, const char* ctx) noexcept {
    return std::strcmp(orEmpty(o->objID()), orEmpty(id)) == 0 && std::strcmp(o->registeredClass(), orEmpty(cls)) == 0 &&
           std::strcmp(orEmpty(o->context()), orEmpty(ctx)) == 0;
}

struct Slot {
    std::uint64_t hash = 0;
    _ADObject* obj = nullptr;  // null: free
};
struct SlotTraits {
    static bool isFree(const Slot& s) noexcept { return !s.obj; }
    static std::uint64_t hashOf(const Slot& s) noexcept { return s.hash; }
};

// The slot of the object registered under a key: stored hashes first, the
// object's own strings only when they agree.
auto byKey(std::uint64_t h, const char* cls, const char* id, const char* ctx) noexcept {
    return [=](const Slot& s) { return s.hash == h && sameKey(s.obj, cls, id, ctx); };
}

class Table {
public:
    std::size_t size() const noexcept { return slots_.size(); }

    _ADObject* find(const char* cls, const char* id, const char* ctx) const noexcept {
        std::uint64_t h = hashOf(cls, id, ctx);
        const Slot* s = slots_.find(h, byKey(h, cls, id, ctx));
        return s ? s->obj : nullptr;
    }
    // Batched lookups in groups: the home slots of a group are fetched first,
    // then the objects whose stored hash agrees, then each probe runs on what
    // is already in the cache.
    void findMany(std::size_t n, const DSRegistrar::Key* keys, _ADObject** out) const noexcept {
        constexpr std::size_t kGroup = 32;
        std::uint64_t h[kGroup];
        for (std::size_t base = 0; base < n; base += kGroup) {
            std::size_t m = n - base < kGroup ? n - base : kGroup;
            const DSRegistrar::Key* k = keys + base;
            if (slots_.size() == 0) {
                for (std::size_t i = 0; i < m; ++i) out[base + i] = nullptr;
                continue;
            }
            for (std::size_t i = 0; i < m; ++i) {
                h[i] = hashOf(k[i].className, k[i].objID, k[i].context);
                slots_.prefetch(h[i]);
            }
            for (std::size_t i = 0; i < m; ++i) {
                const Slot& s = slots_.home(h[i]);
                if (s.obj && s.hash == h[i]) {
                    // The identity strings lie in the object's first two lines.
                    __builtin_prefetch(s.obj);
                    __builtin_prefetch(reinterpret_cast<const char*>(s.obj) + 64);
                }
            }
            for (std::size_t i = 0; i < m; ++i) {
                const Slot* s = slots_.find(h[i], byKey(h[i], k[i].className, k[i].objID, k[i].context));
                out[base + i] = s ? s->obj : nullptr;
            }
        }
    }
    // Adds under the key unless it is taken; answers whether it was added.
    bool insert(_ADObject* obj, const char* cls) {
        std::uint64_t h = hashOf(cls, obj->objID(), obj->context());
        return slots_.insert(h, byKey(h, cls, obj->objID(), obj->context()), Slot{h, obj}).second;
    }
    // Takes off the entry of a registered object, if it is the one its key
    // names: the object is looked for by its address on its key's run.
    bool erase(_ADObject* obj) noexcept {
        std::uint64_t h = hashOf(obj->registeredClass(), obj->objID(), obj->context());
        return slots_.erase(h, [obj](const Slot& s) { return s.obj == obj; });
    }
    template <class F>
    void each(F&& f) const {
        slots_.each([&](const Slot& s) { f(s.obj); });
    }

private:
    krflat::FlatTable<Slot, SlotTraits> slots_;
};

Table& table() {
    static Table t;
    return t;
}
}  // namespace

_ADObject* DSRegistrar::findObj(const char* className, const char* objID, const char* context) {
    return table().find(className, objID, context);
}

void DSRegistrar::findObjs(std::size_t n, const Key* keys, _ADObject** out) { table().findMany(n, keys, out); }

int DSRegistrar::registerObj(_ADObject* obj) {
    if (!obj || obj->registeredClass()) return 0;
    const char* cls = obj->whoAmI();
    for (;;) {
        if (table().insert(obj, cls)) {
            obj->setRegisteredClass(cls);
            return 1;
        }
        // A generated identity that is taken for this class and version (a
        // caller gave it, or the numbers started again) is passed over.
        if (!obj->identityGenerated()) return 0;
        obj->takeNextGeneratedIdentity();
    }
}

int DSRegistrar::deRegisterObj(_ADObject* obj) {
    if (!obj || !obj->registeredClass()) return 0;
    if (!table().erase(obj)) return 0;
    obj->setRegisteredClass(nullptr);
    return 1;
}

unsigned long DSRegistrar::hashFn(const char* className) {
    unsigned long h = 0;
    if (!className) return 0;
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(className); *p; ++p)
        h = (h * 32 + *p) % 1000003UL;
    return h;
}

std::size_t DSRegistrar::count() { return table().size(); }

std::size_t DSRegistrar::releaseAll() {
    std::vector<_ADObject*> live;
    live.reserve(table().size());
    table().each([&](_ADObject* o) { live.push_back(o); });
    // First take every mutual reference out of the graph, then let the
    // handles go: no object is freed while another still walks it.
    std::vector<ADObject> held;
    for (_ADObject* o : live) o->dropReferences(held);
    held.clear();
    return live.size();
}

void DSRegistrar::collect(void (*visit)(_ADObject*, void*), void* user) {
    // A handle on every object registered now keeps each alive through the
    // walk, whatever the visitor frees (deleting a link frees the end objects
    // only the link held). An object that has left the registry by the time
    // its turn comes is not visited.
    std::vector<ADObject> held;
    held.reserve(table().size());
    table().each([&](_ADObject* o) { held.emplace_back(o); });
    for (const ADObject& h : held)
        if (h->registeredClass()) visit(h.impl(), user);
    // The handles go now, and with them every object that only the walk still
    // held. Each object's count includes its handle here, so no object freed
    // on the way frees another that is still in the list.
}
