// DSRegistrar.cpp — hash-map registry keyed by (class, object ID, context). The
// key views point into the object's own strings, so a lookup copies nothing.
#include "platform/repository/DSRegistrar.h"

#include "platform/repository/ADObject.h"

#include <cstring>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {
struct Key {
    std::string_view cls, id, ctx;
    bool operator==(const Key& o) const noexcept { return cls == o.cls && id == o.id && ctx == o.ctx; }
};
struct KeyHash {
    std::size_t operator()(const Key& k) const noexcept {
        std::hash<std::string_view> h;
        std::size_t v = h(k.id);
        v ^= h(k.cls) + 0x9e3779b97f4a7c15ULL + (v << 6) + (v >> 2);
        v ^= h(k.ctx) + 0x9e3779b97f4a7c15ULL + (v << 6) + (v >> 2);
        return v;
    }
};
using Map = std::unordered_map<Key, _ADObject*, KeyHash>;
Map& map() {
    static Map m;
    return m;
}
std::string_view sv(const char* s) { return s ? std::string_view(s) : std::string_view(); }
Key keyOf(_ADObject* o) { return Key{sv(o->registeredClass()), sv(o->objID()), sv(o->context())}; }
}  // namespace

_ADObject* DSRegistrar::findObj(const char* className, const char* objID, const char* context) {
    auto it = map().find(Key{sv(className), sv(objID), sv(context)});
    return it == map().end() ? nullptr : it->second;
}

int DSRegistrar::registerObj(_ADObject* obj) {
    if (!obj || obj->registeredClass()) return 0;
    const char* cls = obj->whoAmI();
    for (;;) {
        if (map().try_emplace(Key{sv(cls), sv(obj->objID()), sv(obj->context())}, obj).second) {
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
    auto it = map().find(keyOf(obj));
    if (it == map().end() || it->second != obj) return 0;
    map().erase(it);
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

std::size_t DSRegistrar::count() { return map().size(); }

std::size_t DSRegistrar::releaseAll() {
    std::vector<_ADObject*> live;
    live.reserve(map().size());
    for (auto& kv : map()) live.push_back(kv.second);
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
    held.reserve(map().size());
    for (auto& kv : map()) held.emplace_back(kv.second);
    for (const ADObject& h : held)
        if (h->registeredClass()) visit(h.impl(), user);
    // The handles go now, and with them every object that only the walk still
    // held. Each object's count includes its handle here, so no object freed
    // on the way frees another that is still in the list.
}
