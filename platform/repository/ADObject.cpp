// ADObject.cpp — handle counting, the implementation base, notifications and the
// generic reference walk that releases a repository.
#include <krmwtarn/platform/repository/ADObject.h>

#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

// ---- handle -------------------------------------------------------------

ADObject::ADObject(const char*, const char*, int) noexcept : impl_(nullptr) {}

ADObject::ADObject(_ADObject* impl) noexcept : impl_(impl) {
    if (impl_) impl_->newHandle();
}

ADObject::ADObject(const ADObject& other) noexcept : impl_(other.impl_) {
    if (impl_) impl_->newHandle();
}

ADObject& ADObject::operator=(const ADObject& other) noexcept {
    if (this != &other) *this = other.impl_;
    return *this;
}

ADObject& ADObject::operator=(ADObject&& other) noexcept {
    if (this != &other) {
        _ADObject* incoming = other.release();
        ADObject old;
        old.impl_ = impl_;
        impl_ = incoming;
    }
    return *this;
}

ADObject& ADObject::operator=(_ADObject* impl) noexcept {
    if (impl == impl_) return *this;
    if (impl) impl->newHandle();
    ADObject old;
    old.impl_ = impl_;
    impl_ = impl;
    return *this;  // `old` releases the previous object
}

ADObject::~ADObject() {
    if (!impl_) return;
    // The implementation's destructor gives back the last handle itself.
    if (impl_->_get_useCount() <= 1)
        delete impl_;
    else
        impl_->freeHandle();
    impl_ = nullptr;
}

void ADObject::adopt(_ADObject* impl) noexcept { impl_ = impl; }

const char* ADObject::defaultObjID() noexcept { return "*new*"; }

// ---- implementation base ------------------------------------------------

namespace {
// Generated identities are "#" and a number. The numbers run upward from 1 and
// move past every given ID of that form, so a generated identity differs from
// every identity given or generated before it. Past the largest number they
// start again at 1 (0 is never used). Either way registration passes over an
// identity that is taken for the object's class and version (see
// DSRegistrar::registerObj), so no object made with the default ID is ever
// refused by the registry. Like the registry, meant for one thread.
unsigned long nextNumber = 1;

bool isDefaultID(const char* objID) { return !objID || std::strcmp(objID, ADObject::defaultObjID()) == 0; }

std::string nextGeneratedIdentity() {
    if (nextNumber == 0) nextNumber = 1;
    char id[24];
    std::snprintf(id, sizeof id, "#%lu", nextNumber++);
    return id;
}

std::string identityFor(const char* objID) {
    if (isDefaultID(objID)) return nextGeneratedIdentity();
    // A given ID of the generated form moves the numbers past it; one too
    // large for a number is no identity the generator could make.
    if (objID[0] == '#' && std::isdigit(static_cast<unsigned char>(objID[1]))) {
        char* end = nullptr;
        errno = 0;
        unsigned long n = std::strtoul(objID + 1, &end, 10);
        if (*end == '\0' && errno != ERANGE && n >= nextNumber) nextNumber = n + 1;
    }
    return objID;
}

adnotify::Listener& listener() {
    static adnotify::Listener l;
    return l;
}

ADAttributeEntry baseTable[] = {
    adAttributeRow("adName", adv::String::name, adv::String::width, nullptr,
                   adv::String::getter(&_ADObject::_get_adName), adv::String::setter(&_ADObject::_set_adName),
                   adRowAttribute),
    {},
};
}  // namespace

_ADObject::_ADObject(const char* context, const char* objID, int)
    : useCount_(1),
      status_(0),
      changes_(0),
      identityGenerated_(isDefaultID(objID)),
      registeredClass_(nullptr),
      adName_(nullptr),
      objID_(identityFor(objID)),
      key_(context ? context : "") {}

_ADObject::~_ADObject() {
    releaseLastHandle();
    // The release step leaves the entry of an object whose status says deleted.
    // When the bit was set directly rather than by markDeleted, that entry still
    // names this object: it goes with the object, so no lookup finds freed memory.
    DSRegistrar::deRegisterObj(this);
    std::free(adName_);
}

void _ADObject::releaseLastHandle() noexcept {
    if (useCount_ != 1) return;
    freeHandle();
    if (!(status_ & adStatusDeleted)) DSRegistrar::deRegisterObj(this);
}

void _ADObject::takeNextGeneratedIdentity() { objID_ = nextGeneratedIdentity(); }

const char* _ADObject::whoAmI() { return "ADObject"; }
const char* _ADObject::getClassName() { return whoAmI(); }
ADObject* _ADObject::createNewHandle() { return new ADObject(this); }
int _ADObject::isNamedObject() { return 0; }
int _ADObject::isRelationshipObject() { return 0; }

int _ADObject::isKindOf(const char* className) { return className && std::strcmp(className, "ADObject") == 0; }

void _ADObject::markDeleted(DSModelCollection* deleted, int) {
    if (status_ & adStatusDeleted) return;
    DSRegistrar::deRegisterObj(this);
    status_ |= adStatusDeleted;
    if (deleted) deleted->addLast(ADObject(this));
}

ADAttributeEntry* _ADObject::ownTable() noexcept { return baseTable; }
ADAttributeEntry* _ADObject::attributeTable() { return baseTable; }

ADAttributeEntry* _ADObject::nextAttributeTable(ADAttributeEntry* previous) {
    return previous ? nullptr : attributeTable();
}

unsigned long _ADObject::getChangeFlag(const char* name) {
    if (!name) {
        if (status_ & adStatusNew) return 1;
        if (status_ & adStatusDeleted) return 8;
        return changes_ ? 4 : 0;
    }
    if (std::strcmp(name, "adName") == 0) return changes_ & 1u;
    return 0;
}

unsigned long _ADObject::setChangeBit(const char* name, omSetProcessing how) {
    if (!name || std::strcmp(name, "adName") != 0) return 0;
    if (how == omClearChanged)
        changes_ &= static_cast<unsigned char>(~1u);
    else
        changes_ |= 1u;
    return 1;
}

void _ADObject::_set_adName(const char* value, omSetProcessing how) {
    if ((how & omKeepChanged) && (changes_ & 1u)) return;
    if (how & omStore) {
        if (!value && !adName_) return;
        if (value && adName_ && std::strcmp(value, adName_) == 0) return;
        std::free(adName_);
        adName_ = value ? strdup(value) : nullptr;
    }
    if (how & omSetChanged) changes_ |= 1u;
    if (how & omClearChanged) changes_ &= static_cast<unsigned char>(~1u);
    if (how & (omStore | omSetChanged)) processNotification("adName");
}

void _ADObject::processNotification(const char* name) {
    if (listener().notification) listener().notification(this, name);
}

void _ADObject::processChangeFlag() {
    if (listener().changeFlag) listener().changeFlag(this);
}

void _ADObject::dropReferences(std::vector<ADObject>& into) {
    for (ADAttributeEntry* t = nextAttributeTable(nullptr); t; t = nextAttributeTable(t)) {
        for (ADAttributeEntry* row = t; row->name; ++row) {
            if (adIsRoleRow(*row) && row->getter.role) {
                (this->*row->getter.role)()->drainInto(into);
            } else if (adIsEndRow(*row) && row->getter.end) {
                ADObject* end = (this->*row->getter.end)();
                if (end && !end->isEmpty()) into.push_back(std::move(*end));
            }
        }
    }
}

namespace adnotify {
Listener setListener(Listener l) {
    Listener old = std::move(listener());
    listener() = std::move(l);
    return old;
}
}  // namespace adnotify
