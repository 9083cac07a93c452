// ADIdentity.h — construction by identity, shared by every handle class: the
// default object ID always makes and registers a new object; any other ID shares
// the live object of that class, ID and context, or makes and registers one.
#pragma once

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>

#include <cstring>
#include <new>

template <class Impl>
_ADObject* adAcquire(const char* className, const char* context, const char* objID, int instantiate) {
    if (!instantiate) return nullptr;
    if (!context) context = "";
    // A missing object ID is taken as the default: a new object.
    if (!objID || std::strcmp(objID, ADObject::defaultObjID()) == 0) {
        _ADObject* made = new (std::nothrow) Impl(context, ADObject::defaultObjID());
        DSRegistrar::registerObj(made);
        return made;
    }
    if (_ADObject* found = DSRegistrar::findObj(className, objID, context)) {
        found->newHandle();
        return found;
    }
    _ADObject* made = new (std::nothrow) Impl(context, objID);
    DSRegistrar::registerObj(made);
    return made;
}
