// main.cpp — a client of the installed library, as the README shows it.
#include <krmwtarn/krmwtarn.h>

int main() {
    // By identity: the default object ID always makes a new registered object;
    // any other ID shares the live object of that class, ID and version.
    DSDBD dbd("V1", ADObject::defaultObjID(), 1);
    dbd->_set_strDBDName("HOSPDBD", omStore | omSetChanged);      // name: stored, bit untouched
    dbd->_set_versionString("1.0", omStore | omSetChanged);       // stored, bit 64 set
    unsigned long changed = dbd->getChangeFlag("versionString");  // 64

    DSSegment root("V1", ADObject::defaultObjID(), 1);
    DSContainsSegment link(&dbd, &root, 1);  // joins dbd.segments and root.containingDBD
    for (DSSegment* s = dbd->_getFirst_segments(); s; s = dbd->_getNext_segments()) { /* ... */
    }

    DSRegistrar::releaseAll();  // frees every object graph (links and objects hold each other)
    return changed == 64 ? 0 : 1;
}
