// ADLink.cpp — base behaviour of every link implementation.
#include <krmwtarn/platform/repository/ADLink.h>

#include <cstring>

namespace {
ADAttributeEntry linkBaseTable[] = {{}};
}

_ADLink::_ADLink(const char* context, const char* objID, int instantiate)
    : _ADObject(context, objID, instantiate), endChanges_(0) {}

const char* _ADLink::whoAmI() { return "ADLink"; }
int _ADLink::isRelationshipObject() { return 1; }

int _ADLink::isKindOf(const char* className) {
    if (className && std::strcmp(className, "ADLink") == 0) return 1;
    return _ADObject::isKindOf(className);
}

ADAttributeEntry* _ADLink::ownTable() noexcept { return linkBaseTable; }
ADAttributeEntry* _ADLink::attributeTable() { return linkBaseTable; }

ADAttributeEntry* _ADLink::nextAttributeTable(ADAttributeEntry* previous) {
    if (!previous) return attributeTable();
    if (previous == linkBaseTable) return _ADObject::attributeTable();
    return _ADObject::nextAttributeTable(previous);
}

unsigned long _ADLink::getChangeFlag(const char* name) {
    if (name && std::strcmp(name, "source") == 0) return endChanged(adEndSource) ? adEndSource : 0;
    if (name && std::strcmp(name, "target") == 0) return endChanged(adEndTarget) ? adEndTarget : 0;
    return _ADObject::getChangeFlag(name);
}

unsigned long _ADLink::setChangeBit(const char* name, omSetProcessing how) {
    return _ADObject::setChangeBit(name, how);
}

ADObject* _ADLink::getSource() { return nullptr; }
ADObject* _ADLink::getTarget() { return nullptr; }
int _ADLink::sourceIsControlling() { return 0; }
int _ADLink::targetIsControlling() { return 0; }
