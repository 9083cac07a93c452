// DSRegistrar.h — the process-wide registry of live implementation objects,
// keyed by class name, object ID and version context, with a hash lookup. It
// also releases a whole repository: every handle that registered objects hold
// on each other is dropped, so object graphs with cycles are freed.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <cstddef>

class _ADObject;

class KRMWTARN_API DSRegistrar {
public:
    struct Key {
        const char* className;
        const char* objID;
        const char* context;
    };

    static _ADObject* findObj(const char* className, const char* objID, const char* context);
    // findObj for many keys at once: out[i] answers keys[i]. The table's slots
    // and the objects they name are fetched ahead of use, so the memory waits
    // of a large repository overlap instead of adding up.
    static void findObjs(std::size_t n, const Key* keys, _ADObject** out);
    // Registers under the object's class name, ID and context. Answers 1, or 0
    // for a null object, one already registered, or a key that is already
    // taken. An object whose identity was generated is never refused for a
    // taken key: it takes the next generated identity that is free.
    static int registerObj(_ADObject* obj);
    // Takes the object's own entry off. Answers 1, or 0 when it had none.
    static int deRegisterObj(_ADObject* obj);
    // String hash of a class name: h = (h * 32 + c) mod 1000003 from 0.
    static unsigned long hashFn(const char* className);

    static std::size_t count();
    // Drop every reference that registered objects hold on other objects.
    // Objects no caller holds a handle on are freed now; the others when their
    // last handle goes. Answers the number of objects that were registered.
    static std::size_t releaseAll();
    // Call f for every object registered when the walk begins and still
    // registered when its turn comes (in no particular order). The walk holds
    // a handle on each of those objects until it ends, so f may delete links,
    // drop handles or release the repository: what that frees goes when the
    // walk ends, and while f runs every use count is one higher.
    template <class F>
    static void forEach(F&& f);

private:
    static void collect(void (*visit)(_ADObject*, void*), void* user);
};

template <class F>
void DSRegistrar::forEach(F&& f) {
    collect([](_ADObject* o, void* u) { (*static_cast<F*>(u))(o); }, &f);
}
