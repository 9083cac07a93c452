// TestSupport.h — helpers that the test suites share: catching the library's
// exception pointer, and finding an attribute-table row by class name along the
// superclass line of the registered components' class tables.
#pragma once

#include <krmwtarn/platform/common/Refusals.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <cstring>
#include <memory>
#include <utility>

// Catches the library's exception pointer and hands it over for inspection.
template <class F>
std::unique_ptr<KVException> thrown(F&& f) {
    return kr::refusalOf(std::forward<F>(f));
}

// The row named `name` in the class's table or a superclass's, or null.
inline const ADAttributeEntry* findRow(const char* className, const char* name) {
    for (const _classStruct* c = DSRegistration::findClass(className); c;
         c = c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr)
        for (const ADAttributeEntry* row = c->attributes; row && row->name; ++row)
            if (std::strcmp(row->name, name) == 0) return row;
    return nullptr;
}
