// DSTechnologyObject.h — the technology-object bases: _KVPart (a named part with
// annotations and dependencies), _DSCorviaObject (the unit operations copy,
// store, lock, ...) and _DSTechnologyObject, with the handle DSTechnologyObject.
// The unit operations go to the current repository (DSRepositoryClient.h).
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/techobj/DSmacro.h>

class DSTechnologyObject;

class KRMWTARN_API _KVPart : public _ADObject {
public:
    _KVPart(const char* context, const char* objID, int instantiate = 1);
    int isNamedObject() override;
    int isKindOf(const char* className) override;
    ADAttributeEntry* attributeTable() override;
    ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous) override;
    unsigned long getChangeFlag(const char* name) override;
    unsigned long setChangeBit(const char* name, omSetProcessing how) override;

    static ADAttributeEntry* ownTable() noexcept;

    // Annotation texts (ADLinkADAnnotObj2AnnotTxt) and dependencies on other
    // parts (ADLinkKVPartDependsOnKVPart).
    DSModelCollection* _get_pAnnotationText() { return &pAnnotationText_; }
    DSModelCollection* _get_dependsOn() { return &dependsOn_; }
    DSModelCollection* _get_dependents() { return &dependents_; }

private:
    unsigned char changes_;
    DSModelCollection pAnnotationText_;
    DSModelCollection dependsOn_;
    DSModelCollection dependents_;
};

class KRMWTARN_API _DSCorviaObject : public _KVPart {
public:
    _DSCorviaObject(const char* context, const char* objID);
    virtual int copy();
    virtual int deleteFromRepository();
    virtual int getDeleteList(DSModelCollection* into);
    virtual int retrieve();
    virtual int refresh();
    virtual int store();
    virtual int lock();
    virtual int unlock();
    virtual int touch();
    virtual int setFullName(const char*, const char*, const char*, const char*, const char*, const char*, const char*,
                            const char*);
    virtual int setFullName(const char*, const char*, const char*, const char*);
    virtual int setFullName(const char*, char, char);
    virtual int setFullName(const char*);
    virtual int getReconcileableObjects(DSModelCollection** into, DSParmList* parms);
    virtual int isDependent(DSTechnologyObject* other);
};

class KRMWTARN_API _DSTechnologyObject : public _DSCorviaObject {
public:
    _DSTechnologyObject(const char* context, const char* objID);
    int isKindOf(const char* className) override;
};

class KRMWTARN_API DSTechnologyObject : public ADObject {
public:
    DSTechnologyObject() noexcept = default;
    DSTechnologyObject(const char* context, const char* objID, int instantiate) noexcept
        : ADObject(context, objID, instantiate) {}
    explicit DSTechnologyObject(_ADObject* impl) noexcept : ADObject(impl) {}
};
