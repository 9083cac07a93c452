// ADLink.h — the repository client's relationship pair: the link handle ADLink
// and the implementation base _ADLink, which keeps the change state of the two
// ends (bit 1 source, bit 2 target) and answers for it by the names "source"
// and "target".
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADObject.h>

class KRMWTARN_API ADLink : public ADObject {
public:
    ADLink() noexcept = default;
    ADLink(const char* context, const char* objID, int instantiate) noexcept : ADObject(context, objID, instantiate) {}
    explicit ADLink(_ADObject* impl) noexcept : ADObject(impl) {}
};

enum : unsigned char {
    adEndSource = 1,
    adEndTarget = 2,
};

class KRMWTARN_API _ADLink : public _ADObject {
public:
    _ADLink(const char* context, const char* objID, int instantiate = 1);

    const char* whoAmI() override;
    int isRelationshipObject() override;
    int isKindOf(const char* className) override;
    ADAttributeEntry* attributeTable() override;
    ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous) override;
    // "source" and "target" answer the end change bits; other names go on.
    unsigned long getChangeFlag(const char* name) override;
    unsigned long setChangeBit(const char* name, omSetProcessing how) override;

    static ADAttributeEntry* ownTable() noexcept;

    // The end objects; null handles before the ends are set.
    virtual ADObject* getSource();
    virtual ADObject* getTarget();
    virtual int sourceIsControlling();
    virtual int targetIsControlling();

    // End change bits (adEndSource, adEndTarget), written only by end setters.
    bool endChanged(unsigned char end) const noexcept { return (endChanges_ & end) != 0; }
    void setEndChanged(unsigned char end, bool on) noexcept {
        endChanges_ = static_cast<unsigned char>(on ? (endChanges_ | end) : (endChanges_ & ~end));
    }

private:
    unsigned char endChanges_;
};
