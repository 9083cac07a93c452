// KRLink.cpp — the algorithms of every link class, driven by its catalogue row.
#include <krmwtarn/model/framework/KRLink.h>

#include <krmwtarn/platform/common/KVException.h>
#include <krmwtarn/platform/common/Trace.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>

#include <cassert>
#include <cstdio>
#include <memory>
#include <string>

namespace {
const char* const endName[2] = {"source", "target"};
const unsigned char endBit[2] = {adEndSource, adEndTarget};

void traceRule(const char* linkName, const char* what) {
    if (!(TRACEFLAG && KRGCRIT())) return;
    std::string message = std::string(linkName) + what;
    TRACELINE = __LINE__;
    TRACEFILENAME = __FILE__;
    KRGTRACE(message.c_str());
}

const char* versionOf(ADObject* o) { return (*o)->getRepositoryKey()->getVersionString(); }

[[noreturn]] void throwWrongClass(const KRLinkInfo& info, int end, const char* actual) {
    throw new KVException("ewswtarn_", 2498, info.endClass[end], actual, info.implName, endName[end]);
}

// Refuses a null pointer or an empty handle as an end, naming the expected class.
void requireObject(const KRLinkInfo& info, int end, ADObject* o) {
    if (!o || o->isEmpty()) throwWrongClass(info, end, "");
}
}  // namespace

_KRLink::_KRLink(const char* context, const char* objID) : _ADLink(context, objID, 1) {}

const char* _KRLink::whoAmI() { return linkInfo().name; }

ADObject* _KRLink::createNewHandle() { return linkInfo().makeHandle(this); }

int _KRLink::isKindOf(const char* className) {
    return kr::isNamed(className, linkInfo().name) ? 1 : _ADLink::isKindOf(className);
}

ADAttributeEntry* _KRLink::attributeTable() { return linkInfo().table; }

ADAttributeEntry* _KRLink::nextAttributeTable(ADAttributeEntry* previous) {
    if (!previous) return attributeTable();
    if (previous == linkInfo().table) return _ADLink::attributeTable();
    return _ADLink::nextAttributeTable(previous);
}

unsigned long _KRLink::getChangeFlag(const char* name) {
    if (name) return _ADLink::getChangeFlag(name);
    if (status() & adStatusNew) return 1;
    if (status() & adStatusDeleted) return 8;
    return _ADLink::getChangeFlag(nullptr) ? 4 : 0;
}

unsigned long _KRLink::setChangeBit(const char* name, omSetProcessing how) { return _ADLink::setChangeBit(name, how); }

void _KRLink::markDeleted(DSModelCollection* deleted, int flags) {
    ADObject keep(this);  // the roles may hold the last handles on this link
    remove_source();
    remove_target();
    _ADLink::markDeleted(deleted, flags);
}

const char* _KRLink::_get_sourceAttribute() { return linkInfo().endRole[krSource]; }
const char* _KRLink::_get_targetAttribute() { return linkInfo().endRole[krTarget]; }
ADObject* _KRLink::getSource() { return &endSlot(krSource); }
ADObject* _KRLink::getTarget() { return &endSlot(krTarget); }
int _KRLink::sourceIsControlling() { return linkInfo().controlling(krSource) ? 1 : _ADLink::sourceIsControlling(); }
int _KRLink::targetIsControlling() { return linkInfo().controlling(krTarget) ? 1 : _ADLink::targetIsControlling(); }

void _KRLink::setEnd(int end, ADObject* newEnd, omSetProcessing how) {
    const KRLinkInfo& info = linkInfo();
    ADObject& slot = endSlot(end);
    ADObject& other = endSlot(1 - end);
    if (how & omStore) {
        requireObject(info, end, newEnd);
        if (!(*newEnd)->isKindOf(info.endClass[end])) throwWrongClass(info, end, (*newEnd)->whoAmI());
    }
    if ((how & omKeepChanged) && endChanged(endBit[end])) return;
    if (how & omStore) {
        if (!other.isEmpty()) {
            const char* mine = versionOf(newEnd);
            const char* theirs = versionOf(&other);
            if (std::strcmp(mine, theirs) != 0) throw new KVException("ewswtarn_", 2510, mine, theirs);
        }
        ADObject self(this);
        if (!slot.isEmpty() && slot == *newEnd) return;
        DSModelCollection* role = info.role[end]((*newEnd).impl());
        if (info.controllerTest(end) && !other.isEmpty() && role->count() != 0) {
            std::unique_ptr<ADObject> theirs(other->findController());
            std::unique_ptr<ADObject> mine((*newEnd)->findController());
            if (theirs && mine && !(*theirs == *mine))
                throw new KVException("ewswtarn_", 2514, info.name, info.endClass[end], info.endClass[end]);
        }
        if (end == krSource)
            remove_source();
        else
            remove_target();
        slot = *newEnd;
        role->addLast(self);
        if (info.oneToOne() && role->count() > 1) traceRule(info.name, ":Cardinality violation!");
    }
    kr::finishSet(this, how, endName[end], [this, end](bool on) { setEndChanged(endBit[end], on); });
}

void _KRLink::setSourceAfter(ADObject* newSource, const ADObject* after, omSetProcessing how) {
    const KRLinkInfo& info = linkInfo();
    ADObject& slot = endSlot(krSource);
    if ((how & omKeepChanged) && endChanged(adEndSource)) return;
    if (how & omStore) {
        requireObject(info, krSource, newSource);
        ADObject self(this);
        if (!slot.isEmpty() && slot == *newSource) return;
        remove_source();
        slot = *newSource;
        DSModelCollection* role = info.role[krSource](newSource->impl());
        if (!after || after->isEmpty())
            role->addFirst(self);
        else
            role->addAfter(self, role->indexOf(after));
    }
    kr::finishSet(this, how, endName[krSource], [this](bool on) { setEndChanged(adEndSource, on); });
}

void _KRLink::moveAfterInSource(const ADObject* after, omSetProcessing how) {
    ADObject& source = endSlot(krSource);
    if (!source.isEmpty()) {
        DSModelCollection* role = linkInfo().role[krSource](source.impl());
        bool found = false;
        for (ADObject* h = role->first(); h && !found; h = role->next()) {
            if (*h == this) {
                role->moveAfter(after && !after->isEmpty() ? after : nullptr);
                found = true;
            }
        }
        assert(found && "a link's source holds the link in its role");
        (void)found;
    }
    // The order lives in the source's role, so the source end is marked.
    kr::finishSet(this, how, endName[krSource], [this](bool on) { setEndChanged(adEndSource, on); });
}

int _KRLink::remove_source() { return removeEnd(krSource); }
int _KRLink::remove_target() { return removeEnd(krTarget); }

int _KRLink::removeEnd(int end) {
    ADObject& slot = endSlot(end);
    if (slot.isEmpty()) return 1;
    DSModelCollection* role = linkInfo().role[end](slot.impl());
    for (ADObject* h = role->first(); h; h = role->next()) {
        if (*h == this) {
            ADObject keep(this);  // the role may hold the link's last counted handle
            role->remove();
            slot = ADObject();
            break;
        }
    }
    assert(slot.isEmpty() && "a link's end holds the link in its role");
    return 1;
}

ADObject _KRLink::create(const KRLinkInfo& info, _KRLink* (*make)(const char* context), ADObject* source,
                         ADObject* target, const ADObject* after, bool placeAfter) {
    requireObject(info, krSource, source);
    requireObject(info, krTarget, target);
    // The duplicate test reaches the source's role through its declared class.
    if (!(*source)->isKindOf(info.endClass[krSource])) throwWrongClass(info, krSource, (*source)->whoAmI());
    // A duplicate is the same source already linked to the same target by a
    // link of this class; it is looked for from the source side only.
    DSModelCollection* role = info.role[krSource](source->impl());
    for (ADObject* h = role->first(); h; h = role->next()) {
        if (*static_cast<_ADLink*>(h->impl())->getTarget() == *target) {
            traceRule(info.name, ":Duplicate rel violation\n");
            char position[24];
            std::snprintf(position, sizeof position, "%ld", role->indexOf());
            throw new KVException("relSameTarget", 2441, info.name, position);
        }
    }
    // A link is always made in the version of its source.
    // The handle holds the link from here on: if an end setter refuses, the
    // link goes with it unless its source's role already took it.
    _KRLink* link = make((*source)->getRepositoryKey()->getVersionString());
    ADObject handle = ADObject::takeFirst(link);
    DSRegistrar::registerObj(link);
    if (!link) return handle;
    if (placeAfter)
        link->setSourceAfter(source, after, omStore | omSetChanged);
    else
        link->setEnd(krSource, source, omStore | omSetChanged);
    (*source)->processChangeFlag();
    link->setEnd(krTarget, target, placeAfter ? (omStore | omSetChanged) : omStore);
    return handle;
}
