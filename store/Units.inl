// Units.inl — the role walk shared by the unit collection and the store.
#pragma once

#include <krmwtarn/platform/repository/ADObject.h>

namespace krstore {

template <class F>
void forEachRole(_ADObject* o, F&& f) {
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t))
        for (ADAttributeEntry* row = t; row->name; ++row)
            if (adIsRoleRow(*row) && row->getter.role) f(*row, (o->*row->getter.role)());
}

}  // namespace krstore
