// DSRegistrar.h — the process-wide registry of live implementation objects,
// keyed by class name, object ID and version context, with a hash lookup. It
// also releases a whole repository: every handle that registered objects hold
// on each other is dropped, so object graphs with cycles are freed.
#pragma once

#include <cstddef>

class _ADObject;

class DSRegistrar {
public:
    static _ADObject* findObj(const char* className, const char* objID, const char* context);
    // Registers under the object's class name, ID and context. Answers 1, or 0
    // for a null object or a key that is already taken.
    static int registerObj(_ADObject* obj);
    static int deRegisterObj(_ADObject* obj);
    // String hash of a class name: h = (h * 32 + c) mod 1000003 from 0.
    static unsigned long hashFn(const char* className);

    static std::size_t count();
    // Drop every reference that registered objects hold on other objects.
    // Objects no caller holds a handle on are freed now; the others when their
    // last handle goes. Answers the number of objects that were registered.
    static std::size_t releaseAll();
    // Call f for every registered object (in no particular order).
    template <class F>
    static void forEach(F&& f);

private:
    static void collect(void (*visit)(_ADObject*, void*), void* user);
};

template <class F>
void DSRegistrar::forEach(F&& f) {
    collect([](_ADObject* o, void* u) { (*static_cast<F*>(u))(o); }, &f);
}
