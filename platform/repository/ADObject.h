// ADObject.h — the repository client's object pair: the handle ADObject (one
// pointer, shared by use count) and the implementation base _ADObject with its
// use count, status word, identity (class, object ID, version context), the
// notification hooks and the reflective base operations every class chains to.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADAttributeEntry.h>

#include <cassert>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class _ADObject;
class DSModelCollection;

// Handle: one pointer to an implementation, counted in its use count.
class KRMWTARN_API ADObject {
public:
    ADObject() noexcept : impl_(nullptr) {}
    // Base of construction by identity: refers to nothing until a class sets it.
    ADObject(const char* context, const char* objID, int instantiate) noexcept;
    // A further handle on an existing implementation (use count + 1).
    explicit ADObject(_ADObject* impl) noexcept;
    ADObject(const ADObject& other) noexcept;
    ADObject(ADObject&& other) noexcept : impl_(other.impl_) { other.impl_ = nullptr; }
    ADObject& operator=(const ADObject& other) noexcept;
    ADObject& operator=(ADObject&& other) noexcept;
    ADObject& operator=(_ADObject* impl) noexcept;
    // Releases this handle; the implementation is deleted with its last handle.
    ~ADObject();

    bool operator==(const ADObject& other) const noexcept { return impl_ == other.impl_; }
    bool operator==(const _ADObject* impl) const noexcept { return impl_ == impl; }

    _ADObject* operator->() const noexcept { return impl_; }
    _ADObject* impl() const noexcept { return impl_; }
    bool isEmpty() const noexcept { return impl_ == nullptr; }

    // Drop the reference without touching the use count (the caller took it over).
    _ADObject* release() noexcept {
        _ADObject* p = impl_;
        impl_ = nullptr;
        return p;
    }

    // The reserved object ID that asks for a new object with an identity of its own.
    static const char* defaultObjID() noexcept;

    // A handle that takes over the first use of a newly made implementation
    // (the use its construction already counted).
    static ADObject takeFirst(_ADObject* impl) noexcept {
        ADObject h;
        h.impl_ = impl;
        return h;
    }

protected:
    // Store an implementation whose first handle this is (no count added).
    void adopt(_ADObject* impl) noexcept;

    _ADObject* impl_;
};

// The version an object lives in.
class KRMWTARN_API ADRepositoryKey {
public:
    explicit ADRepositoryKey(std::string version) : version_(std::move(version)) {}
    const char* getVersionString() const noexcept { return version_.c_str(); }

private:
    std::string version_;
};

// Status bits of every implementation. getChangeFlag(null) answers 1 for a new
// (not yet stored) object and 8 for a deleted one; a deleted object is already
// off the registry, so its destructor does not deregister it again. Should the
// bit have been set directly (setStatus) on a registered object, the base
// destructor takes off the entry that still names the object: no registry
// entry outlives its object.
enum : unsigned {
    adStatusNew = 1,
    adStatusDeleted = 2,
};

class KRMWTARN_API _ADObject {
public:
    _ADObject(const char* context, const char* objID, int instantiate = 1);
    _ADObject(const _ADObject&) = delete;
    _ADObject& operator=(const _ADObject&) = delete;

    // Virtual operations, in slot order.
    virtual const char* whoAmI();
    virtual const char* getClassName();
    virtual ADObject* createNewHandle();
    virtual int isNamedObject();
    virtual int isRelationshipObject();
    virtual int isKindOf(const char* className);
    virtual ~_ADObject();
    virtual void markDeleted(DSModelCollection* deleted, int flags);
    virtual ADAttributeEntry* attributeTable();
    virtual ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous);
    virtual unsigned long getChangeFlag(const char* name);
    virtual unsigned long setChangeBit(const char* name, omSetProcessing how);

    // The base class's own table (adName).
    static ADAttributeEntry* ownTable() noexcept;

    // Use count.
    void newHandle() noexcept { ++useCount_; }
    int freeHandle() noexcept {
        assert(useCount_ > 0 && "a handle freed that was never counted");
        return --useCount_;
    }
    int _get_useCount() const noexcept { return useCount_; }

    unsigned status() const noexcept { return status_; }
    void setStatus(unsigned bits) noexcept { status_ |= bits; }
    void clearStatus(unsigned bits) noexcept { status_ &= ~bits; }

    ADRepositoryKey* getRepositoryKey() noexcept { return &key_; }
    const char* objID() const noexcept { return objID_.c_str(); }
    const char* context() const noexcept { return key_.getVersionString(); }

    // Tell the repository client that an attribute, role or end changed.
    void processNotification(const char* name);
    // Ask the repository client to process this object's change flags.
    void processChangeFlag();

    // The topmost object that controls this one (see DSController.h); the
    // caller owns the new handle.
    ADObject* findController();

    // The name every repository object carries.
    char* _get_adName() noexcept { return adName_; }
    void _set_adName(const char* value, omSetProcessing how);

    // Move every handle this object holds on other objects (role members, link
    // ends) into `into`, so a whole repository can be released without cycles.
    void dropReferences(std::vector<ADObject>& into);

    // Registry bookkeeping, used only by DSRegistrar: the class name the object
    // is registered under (null while it is not registered), and whether its
    // identity was generated, in which case a taken one is exchanged for the
    // next generated identity.
    const char* registeredClass() const noexcept { return registeredClass_; }
    void setRegisteredClass(const char* cls) noexcept { registeredClass_ = cls; }
    bool identityGenerated() const noexcept { return identityGenerated_; }
    void takeNextGeneratedIdentity();

protected:
    // Release step shared by every destructor: with the last handle, free it and
    // take the object off the registry unless it was deleted.
    void releaseLastHandle() noexcept;

private:
    int useCount_;
    unsigned status_;
    unsigned char changes_;  // bit 1: adName
    bool identityGenerated_;
    const char* registeredClass_;
    char* adName_;
    std::string objID_;
    ADRepositoryKey key_;
};

// Observers of what objects tell the repository client.
namespace adnotify {
struct KRMWTARN_API Listener {
    std::function<void(_ADObject*, const char*)> notification;
    std::function<void(_ADObject*)> changeFlag;
};
// Install a listener (an empty one stops observing); returns the previous one.
KRMWTARN_API Listener setListener(Listener listener);
}  // namespace adnotify

#include <krmwtarn/platform/repository/DSModelCollection.h>
