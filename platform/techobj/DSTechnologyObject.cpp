// DSTechnologyObject.cpp — the technology-object bases. The unit operations go
// to the current repository (DSRepositoryClient.h); without one they answer 0
// and change nothing.
#include "platform/techobj/DSTechnologyObject.h"

#include "platform/techobj/DSRepositoryClient.h"

#include <cstring>

DSmacro& DSmacro::empty() noexcept {
    static DSmacro shared;
    return shared;
}

namespace {
ADAttributeEntry partTable[] = {
    {"pAnnotationText", "annotatedObject", "ADAnnotationText", 4, "ADLinkADAnnotObj2AnnotTxt",
     ADGetter{.role = static_cast<DSModelCollection* (_ADObject::*)()>(&_KVPart::_get_pAnnotationText)},
     ADSetter{}, 0, 0x2a03},
    {"dependsOn", "dependents", "KVPart", 4, "ADLinkKVPartDependsOnKVPart",
     ADGetter{.role = static_cast<DSModelCollection* (_ADObject::*)()>(&_KVPart::_get_dependsOn)},
     ADSetter{}, 0, 0x8803},
    {"dependents", "dependsOn", "KVPart", 4, "ADLinkKVPartDependsOnKVPart",
     ADGetter{.role = static_cast<DSModelCollection* (_ADObject::*)()>(&_KVPart::_get_dependents)},
     ADSetter{}, 0, 0x8007},
    {},
};
int ownRow(const char* name) {
    if (!name) return -1;
    for (int i = 0; partTable[i].name; ++i)
        if (std::strcmp(partTable[i].name, name) == 0) return i;
    return -1;
}
}  // namespace

// Each role's collection is made with its row of partTable.
_KVPart::_KVPart(const char* context, const char* objID, int instantiate)
    : _ADObject(context, objID, instantiate),
      changes_(0),
      pAnnotationText_(&partTable[0]),
      dependsOn_(&partTable[1]),
      dependents_(&partTable[2]) {}

int _KVPart::isNamedObject() { return 1; }

int _KVPart::isKindOf(const char* className) {
    if (className && std::strcmp(className, "KVPart") == 0) return 1;
    return _ADObject::isKindOf(className);
}

ADAttributeEntry* _KVPart::ownTable() noexcept { return partTable; }
ADAttributeEntry* _KVPart::attributeTable() { return partTable; }

ADAttributeEntry* _KVPart::nextAttributeTable(ADAttributeEntry* previous) {
    if (!previous) return attributeTable();
    if (previous == partTable) return _ADObject::attributeTable();
    return _ADObject::nextAttributeTable(previous);
}

unsigned long _KVPart::getChangeFlag(const char* name) {
    if (!name) {
        unsigned long base = _ADObject::getChangeFlag(nullptr);
        if (base == 1 || base == 8) return base;
        return (changes_ || base) ? 4 : 0;
    }
    int row = ownRow(name);
    if (row >= 0) return changes_ & (1u << row);
    return _ADObject::getChangeFlag(name);
}

unsigned long _KVPart::setChangeBit(const char* name, omSetProcessing how) {
    int row = ownRow(name);
    if (row < 0) return _ADObject::setChangeBit(name, how);
    if (how == omClearChanged)
        changes_ &= static_cast<unsigned char>(~(1u << row));
    else
        changes_ |= static_cast<unsigned char>(1u << row);
    return 1;
}

_DSCorviaObject::_DSCorviaObject(const char* context, const char* objID) : _KVPart(context, objID, 1) {}

namespace {
DSRepositoryBackend* currentBackend = nullptr;
}  // namespace

DSRepositoryBackend* dsrepository::current() noexcept { return currentBackend; }

DSRepositoryBackend* dsrepository::install(DSRepositoryBackend* backend) noexcept {
    DSRepositoryBackend* previous = currentBackend;
    currentBackend = backend;
    return previous;
}

int _DSCorviaObject::copy() { return currentBackend ? currentBackend->copy(this) : 0; }
int _DSCorviaObject::deleteFromRepository() { return currentBackend ? currentBackend->deleteFromRepository(this) : 0; }
int _DSCorviaObject::getDeleteList(DSModelCollection* into) {
    return currentBackend && into ? currentBackend->getDeleteList(this, into) : 0;
}
int _DSCorviaObject::retrieve() { return currentBackend ? currentBackend->retrieve(this) : 0; }
int _DSCorviaObject::refresh() { return currentBackend ? currentBackend->refresh(this) : 0; }
int _DSCorviaObject::store() { return currentBackend ? currentBackend->store(this) : 0; }
int _DSCorviaObject::lock() { return currentBackend ? currentBackend->lock(this) : 0; }
int _DSCorviaObject::unlock() { return currentBackend ? currentBackend->unlock(this) : 0; }
int _DSCorviaObject::touch() { return currentBackend ? currentBackend->touch(this) : 0; }
int _DSCorviaObject::setFullName(const char*, const char*, const char*, const char*, const char*, const char*,
                                 const char*, const char*) {
    return 0;
}
int _DSCorviaObject::setFullName(const char*, const char*, const char*, const char*) { return 0; }
int _DSCorviaObject::setFullName(const char*, char, char) { return 0; }
int _DSCorviaObject::setFullName(const char*) { return 0; }
int _DSCorviaObject::getReconcileableObjects(DSModelCollection**, DSParmList*) { return 0; }
int _DSCorviaObject::isDependent(DSTechnologyObject*) { return 0; }

_DSTechnologyObject::_DSTechnologyObject(const char* context, const char* objID) : _DSCorviaObject(context, objID) {}

int _DSTechnologyObject::isKindOf(const char* className) {
    if (className && std::strcmp(className, "DSTechnologyObject") == 0) return 1;
    return _DSCorviaObject::isKindOf(className);
}
