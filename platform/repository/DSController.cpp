// DSController.cpp — the controller of an object: follow the link in which the
// object stands at the controlled end (the row of that link's other end carries
// the controlling bit 0x200) to the controlling object, then that object's
// controller, and so on; an object no link controls is its own controller. A
// link object is controlled by whatever controls its controlling end.
#include <krmwtarn/platform/repository/DSController.h>

#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

_ADObject* dsControllerStep(_ADObject* o) {
    if (o->isRelationshipObject()) {
        auto* link = static_cast<_ADLink*>(o);
        if (link->sourceIsControlling() && link->getSource() && !link->getSource()->isEmpty())
            return link->getSource()->impl();
        if (link->targetIsControlling() && link->getTarget() && !link->getTarget()->isEmpty())
            return link->getTarget()->impl();
    }
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t)) {
        for (ADAttributeEntry* row = t; row->name; ++row) {
            if (!adIsRoleRow(*row) || !row->getter.role) continue;
            const _classStruct* link = DSRegistration::findClass(adRoleLinkClass(*row));
            if (!link || !link->attributes || !link->attributes[0].name) continue;
            // This object's end of the link, and the row of the other end.
            bool atSource = adRoleEnd(*row) == adSource;
            const ADAttributeEntry& otherEnd = link->attributes[atSource ? 1 : 0];
            if (!(otherEnd.flags & adFlagControlling)) continue;
            DSModelCollection* role = (o->*row->getter.role)();
            for (const ADObject& h : *role) {
                auto* l = static_cast<_ADLink*>(h.impl());
                ADObject* far = atSource ? l->getTarget() : l->getSource();
                if (far && !far->isEmpty()) return far->impl();
            }
        }
    }
    return nullptr;
}

ADObject* _ADObject::findController() {
    _ADObject* top = this;
    // A chain of controllers is short; the bound only guards against a cycle.
    for (int depth = 0; depth < 64; ++depth) {
        _ADObject* up = dsControllerStep(top);
        if (!up || up == this) break;
        top = up;
    }
    return new ADObject(top);
}
