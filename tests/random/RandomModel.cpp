// RandomModel.cpp — the operations, the outcome predictions and the invariant
// check of the randomized run (see RandomModel.h).
#include "RandomModel.h"

#include <krmwtarn/model/framework/GraphCheck.h>
#include <krmwtarn/platform/repository/ADReflection.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <sstream>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace krrandom {

bool probeGeneratedIds = std::getenv("KRMWTARN_RANDOM_NO_ID_PROBE") == nullptr;

// ---- choices ------------------------------------------------------------

std::uint32_t SeededChoices::below(std::uint32_t n) {
    std::uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    z ^= z >> 31;
    return static_cast<std::uint32_t>(z % n);
}

std::uint32_t ByteChoices::below(std::uint32_t n) {
    std::uint32_t v = 0;
    for (int i = 0; i < (n > 256 ? 2 : 1); ++i) v = (v << 8) | (used_ < size_ ? data_[used_++] : 0u);
    return v % n;
}

void Tally::add(const Tally& other) {
    for (const auto& [k, v] : other.operations) operations[k] += v;
    for (const auto& [k, v] : other.thrown) thrown[k] += v;
    for (const auto& [k, v] : other.roleRefused) roleRefused[k] += v;
    steps += other.steps;
}

std::string Tally::summary() const {
    std::ostringstream out;
    out << steps << " operations:";
    for (const auto& [k, v] : operations) out << ' ' << k << '=' << v;
    out << "; refused:";
    for (const auto& [k, v] : thrown) out << ' ' << k << '=' << v;
    out << "; role refused:";
    for (const auto& [k, v] : roleRefused) out << ' ' << k << '=' << v;
    return out.str();
}

// ---- what the class tables say ------------------------------------------

namespace {
const char* const endName[2] = {"source", "target"};
const char* const ids[] = {"A", "B", "C", "D"};

struct RoleRow {
    const ADAttributeEntry* row;
    int end;  // the owner's end of the role's links
};

struct ClassRows {
    std::vector<RoleRow> roles;
    std::vector<const ADAttributeEntry*> attributes;  // most derived first, shadowed names left out
};

struct LinkClass {
    const char* name;
    const char* endClass[2];
    std::uint32_t endFlags[2];
    bool ordered() const { return endFlags[krSource] & adFlagOrdered; }
    bool controllerTest(int end) const { return endFlags[1 - end] & adFlagControlling; }
};

bool isValueType(const char* t) { return adFindValueType(t) != nullptr; }

// Rows of an object's whole attribute-table chain, keyed by its class name.
const ClassRows& rowsOf(_ADObject* o) {
    static std::unordered_map<std::string, ClassRows> cache;
    auto [it, inserted] = cache.try_emplace(o->whoAmI());
    if (!inserted) return it->second;
    std::vector<std::string> seen;
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t)) {
        for (ADAttributeEntry* row = t; row->name; ++row) {
            if (adIsRoleRow(*row) && row->getter.role) {
                it->second.roles.push_back({row, adRoleEnd(*row) == adSource ? krSource : krTarget});
            } else if (!adIsEndRow(*row) && isValueType(row->type) &&
                       std::find(seen.begin(), seen.end(), row->name) == seen.end()) {
                it->second.attributes.push_back(row);
            }
            seen.emplace_back(row->name);
        }
    }
    return it->second;
}

const std::vector<LinkClass>& linkClasses() {
    static const std::vector<LinkClass> all = [] {
        std::vector<LinkClass> v;
        for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) {
            if (std::strcmp(c->superclassName, "ADLink") != 0) continue;
            const ADAttributeEntry* t = c->attributes;
            v.push_back({c->className, {t[0].type, t[1].type}, {t[0].flags, t[1].flags}});
        }
        return v;
    }();
    return all;
}

const LinkClass* linkClassNamed(const char* name) {
    for (const LinkClass& l : linkClasses())
        if (std::strcmp(l.name, name) == 0) return &l;
    return nullptr;
}

// Every class the factories make: the component's 68 and the dictionary
// classes at the far end of its links.
const std::vector<const char*>& creatableClasses() {
    static const std::vector<const char*> all = [] {
        std::vector<const char*> v;
        for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) v.push_back(c->className);
        for (const LinkClass& l : linkClasses())
            for (const char* e : l.endClass)
                if (!DSRegistration::componentOf(e) ||
                    std::strcmp(DSRegistration::componentOf(e)->componentName(), ewswtarnComponentName) != 0)
                    if (std::find_if(v.begin(), v.end(), [&](const char* x) { return !std::strcmp(x, e); }) == v.end())
                        v.push_back(e);
        return v;
    }();
    return all;
}

bool classIsKindOf(const char* cls, const char* of) {
    for (const _classStruct* c = DSRegistration::findClass(cls); c;
         c = c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr)
        if (std::strcmp(c->className, of) == 0) return true;
    return false;
}

// The classes that can stand at an end declared as `endClass`.
const std::vector<const char*>& classesOfKind(const char* endClass) {
    static std::unordered_map<std::string, std::vector<const char*>> cache;
    auto [it, inserted] = cache.try_emplace(endClass);
    if (inserted)
        for (const char* c : creatableClasses())
            if (classIsKindOf(c, endClass)) it->second.push_back(c);
    return it->second;
}

bool isLink(_ADObject* o) { return o->isRelationshipObject() != 0; }
_KRLink* asLink(_ADObject* o) { return static_cast<_KRLink*>(o); }
bool present(const ADObject* h) { return h && !h->isEmpty(); }

std::string describe(const ADObject* h) {
    if (!h) return "null";
    if (h->isEmpty()) return "empty";
    return std::string((*h)->whoAmI()) + ":" + (*h)->objID() + "@" + (*h)->context();
}

_ADObject* controllerOf(_ADObject* o) {
    std::unique_ptr<ADObject> h(o->findController());
    return h ? h->impl() : nullptr;
}

long thrownBy(const std::function<void()>& f) {
    try {
        f();
    } catch (KVException* e) {
        long n = e->number();
        delete e;
        return n;
    }
    return 0;
}

std::vector<_ADObject*> members(DSModelCollection* c) {
    std::vector<_ADObject*> v;
    for (const ADObject& h : *c) v.push_back(h.impl());
    return v;
}

bool isRegistered(_ADObject* o) { return DSRegistrar::findObj(o->whoAmI(), o->objID(), o->context()) == o; }

// Every link in the roles of an object, copied before anything changes them.
std::vector<ADObject> linksInRoles(_ADObject* o) {
    std::vector<ADObject> links;
    for (const RoleRow& r : rowsOf(o).roles)
        for (const ADObject& h : *(o->*r.row->getter.role)()) links.push_back(h);
    return links;
}

// Objects in creation order (generated IDs by number), so a replay, whose
// generated numbers may start elsewhere, makes the same choices.
void sortByCreation(std::vector<_ADObject*>& v) {
    using Key = std::tuple<long, std::string_view, std::string_view, std::string_view, _ADObject*>;
    std::vector<Key> keys;
    keys.reserve(v.size());
    for (_ADObject* o : v)
        keys.emplace_back(o->objID()[0] == '#' ? std::atol(o->objID() + 1) : 0L, o->objID(), o->context(), o->whoAmI(),
                          o);
    std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) {
        return std::tie(std::get<0>(a), std::get<1>(a), std::get<2>(a), std::get<3>(a)) <
               std::tie(std::get<0>(b), std::get<1>(b), std::get<2>(b), std::get<3>(b));
    });
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = std::get<4>(keys[i]);
}

std::vector<_ADObject*> registeredObjects() {
    std::vector<_ADObject*> v;
    DSRegistrar::forEach([&](_ADObject* o) { v.push_back(o); });
    return v;
}

// Every live object the run can reach: the registered ones, the ones it holds,
// and what their roles and link ends hold. Besides the registered objects that
// are deleted objects a link still has at an end (markDeleted takes an object
// that is no link off the registry but leaves its links alone).
std::vector<_ADObject*> reachableObjects(const std::vector<ADObject>& held) {
    std::vector<_ADObject*> all = registeredObjects();
    std::unordered_set<_ADObject*> seen(all.begin(), all.end());
    auto reach = [&](const ADObject& h) {
        if (!h.isEmpty() && seen.insert(h.impl()).second) all.push_back(h.impl());
    };
    for (const ADObject& h : held) reach(h);
    for (std::size_t i = 0; i < all.size(); ++i) {
        _ADObject* o = all[i];
        for (const RoleRow& r : rowsOf(o).roles)
            for (const ADObject& h : *(o->*r.row->getter.role)()) reach(h);
        if (isLink(o))
            for (int e = 0; e < 2; ++e) reach(asLink(o)->endSlot(e));
    }
    return all;
}
}  // namespace

DSModelCollection* Driver::roleOf(_ADObject* owner, const char* linkClass, int end) {
    for (const RoleRow& r : rowsOf(owner).roles)
        if (r.end == end && std::strcmp(adRoleLinkClass(*r.row), linkClass) == 0) return (owner->*r.row->getter.role)();
    return nullptr;
}

// ---- snapshots: the whole graph, flattened -------------------------------

// Every reachable object in address order with its use count, whether it is
// registered, its ends and end change bits (links) and its role members. A link
// to leave out is skipped everywhere, and the references it holds are taken off
// the use counts: so the graph after a refused creation that left its link
// behind compares with the graph before.
class Driver::Snapshot {
public:
    void take(const std::vector<ADObject>& held, _ADObject* leaveOut = nullptr) {
        objects = reachableObjects(held);
        words.clear();
        starts.clear();
        std::sort(objects.begin(), objects.end());
        for (_ADObject* o : objects) {
            if (o == leaveOut) continue;
            int count = o->_get_useCount();
            if (leaveOut)
                for (int e = 0; e < 2; ++e) count -= asLink(leaveOut)->endSlot(e) == o;
            starts.emplace_back(words.size(), o);
            words.push_back(reinterpret_cast<std::uintptr_t>(o));
            words.push_back(static_cast<std::uintptr_t>(count));
            words.push_back(isRegistered(o));
            if (isLink(o)) {
                for (int e = 0; e < 2; ++e)
                    words.push_back(reinterpret_cast<std::uintptr_t>(asLink(o)->endSlot(e).impl()));
                words.push_back(asLink(o)->endChanged(adEndSource) | asLink(o)->endChanged(adEndTarget) << 1);
            }
            for (const RoleRow& r : rowsOf(o).roles) {
                words.push_back(0);  // a role begins
                for (const ADObject& h : *(o->*r.row->getter.role)())
                    if (h.impl() != leaveOut) words.push_back(reinterpret_cast<std::uintptr_t>(h.impl()));
            }
        }
    }
    bool contains(_ADObject* o) const { return std::binary_search(objects.begin(), objects.end(), o); }
    // The object whose record first differs, for the failure message.
    std::string firstDifference(const Snapshot& after) const {
        std::size_t i = 0;
        while (i < words.size() && i < after.words.size() && words[i] == after.words[i]) ++i;
        for (auto it = starts.rbegin(); it != starts.rend(); ++it)
            if (it->first <= i)
                return std::string(it->second->whoAmI()) + ":" + it->second->objID() + " (word " +
                       std::to_string(i - it->first) + " of its record)";
        return "the object list";
    }

    std::vector<_ADObject*> objects;
    std::vector<std::uintptr_t> words;
    std::vector<std::pair<std::size_t, _ADObject*>> starts;
};

// ---- driver -------------------------------------------------------------

namespace {
struct Notified {
    std::vector<std::pair<_ADObject*, std::string>> notes;
};
Notified& notified() {
    static Notified n;
    return n;
}
}  // namespace

Driver::Driver(Choices& choices, int slots) : choices_(choices), slots_(static_cast<std::size_t>(slots)) {
    DSRegistrar::releaseAll();
    adnotify::setListener(
        {[](_ADObject* o, const char* name) { notified().notes.emplace_back(o, name ? name : ""); }, {}});
    if (DSRegistrar::count() != 0) fail("the registry was not empty at the start");
}

Driver::~Driver() {
    finish();
    adnotify::setListener({});
}

void Driver::fail(std::string message) {
    if (!failure_.empty()) return;
    failure_ = "step " + std::to_string(tally_.steps) + " (" + operation_ + "): " + std::move(message);
}

bool Driver::step() {
    if (!failure_.empty()) return false;
    ++tally_.steps;
    operation_ = "no operation";
    notified().notes.clear();
    using Op = void (Driver::*)();
    static const std::pair<int, Op> ops[] = {
        {12, &Driver::newObject},        {8, &Driver::byIdentity},   {6, &Driver::copyHandle},
        {6, &Driver::dropHandle},        {30, &Driver::createLink},  {14, &Driver::setLinkEnd},
        {5, &Driver::setSourceAfter},    {5, &Driver::moveInSource}, {8, &Driver::setAttribute},
        {3, &Driver::setChangeBit},      {1, &Driver::releaseAll},   {3, &Driver::markDeleted},
        {1, &Driver::walkDeletingLinks}, {2, &Driver::deletedBit},   {3, &Driver::misuseRole},
    };
    std::uint32_t r = choices_.below(107);
    for (const auto& [weight, op] : ops) {
        if (r < static_cast<std::uint32_t>(weight)) {
            (this->*op)();
            break;
        }
        r -= static_cast<std::uint32_t>(weight);
    }
    // KRMWTARN_RANDOM_TRACE=1 lists every operation of a replay.
    static const bool trace = std::getenv("KRMWTARN_RANDOM_TRACE") != nullptr;
    if (trace) std::fprintf(stderr, "%llu %s\n", static_cast<unsigned long long>(tally_.steps), operation_.c_str());
    if (!failure_.empty()) return false;
    return check();
}

bool Driver::finish() {
    if (!failure_.empty()) return false;
    operation_ = "finish";
    for (ADObject& h : slots_) h = ADObject();
    DSRegistrar::releaseAll();
    if (DSRegistrar::count() != 0)
        fail(std::to_string(DSRegistrar::count()) + " objects still registered after the last handle and a release");
    return failure_.empty();
}

// ---- picking ------------------------------------------------------------

int Driver::freeSlot() {
    int empty = -1;
    for (std::size_t i = 0; i < slots_.size(); ++i)
        if (slots_[i].isEmpty() && (empty < 0 || choices_.percent(30))) empty = static_cast<int>(i);
    if (empty >= 0 && choices_.percent(80)) return empty;
    return static_cast<int>(choices_.below(static_cast<std::uint32_t>(slots_.size())));
}

int Driver::pickHeld(bool (*accept)(const ADObject&, const void*), const void* arg) {
    std::vector<int> fit;
    for (std::size_t i = 0; i < slots_.size(); ++i)
        if (!slots_[i].isEmpty() && (!accept || accept(slots_[i], arg))) fit.push_back(static_cast<int>(i));
    if (fit.empty()) return -1;
    return fit[choices_.below(static_cast<std::uint32_t>(fit.size()))];
}

const char* Driver::pickContext() {
    std::uint32_t r = choices_.below(100);
    return r < 88 ? "V1" : r < 98 ? "V2" : nullptr;
}

ADObject Driver::objectOfClass(const char* className) {
    const auto& kinds = classesOfKind(className);
    if (kinds.empty()) return ADObject();
    const char* cls = kinds[choices_.below(static_cast<std::uint32_t>(kinds.size()))];
    std::unique_ptr<ADObject> h(
        DSRegistration::create(cls, choices_.percent(92) ? "V1" : "V2", ADObject::defaultObjID()));
    if (!present(h.get())) {
        fail(std::string("the factory made no ") + cls);
        return ADObject();
    }
    ADObject copy(*h);
    slots_[static_cast<std::size_t>(freeSlot())] = std::move(*h);
    return copy;
}

ADObject Driver::pickEnd(const char* endClass) {
    int i = pickHeld([](const ADObject& h, const void* c) { return h->isKindOf(static_cast<const char*>(c)) != 0; },
                     endClass);
    if (i < 0 || choices_.percent(15)) return objectOfClass(endClass);
    return slots_[static_cast<std::size_t>(i)];
}

ADObject Driver::pickLink(bool orderedOnly) {
    auto accept = [](const ADObject& h, const void* o) {
        if (!h->isRelationshipObject()) return false;
        return !*static_cast<const bool*>(o) || asLink(h.impl())->linkInfo().ordered();
    };
    if (choices_.percent(60)) {
        int i = pickHeld(accept, &orderedOnly);
        if (i >= 0) return slots_[static_cast<std::size_t>(i)];
    }
    // A link reached through a role of a held object.
    int i = pickHeld(nullptr, nullptr);
    if (i < 0) return ADObject();
    _ADObject* owner = slots_[static_cast<std::size_t>(i)].impl();
    std::vector<const ADObject*> found;
    for (const RoleRow& r : rowsOf(owner).roles)
        for (const ADObject& h : *(owner->*r.row->getter.role)())
            if (accept(h, &orderedOnly)) found.push_back(&h);
    if (found.empty()) return ADObject();
    return *found[choices_.below(static_cast<std::uint32_t>(found.size()))];
}

namespace {
omSetProcessing pickHow(Choices& c) {
    std::uint32_t r = c.below(100);
    if (r < 40) return omStore | omSetChanged;
    if (r < 55) return omStore;
    return c.below(16);
}
}  // namespace

// ---- object operations ----------------------------------------------------

void Driver::newObject() {
    const auto& classes = creatableClasses();
    const char* cls = classes[choices_.below(static_cast<std::uint32_t>(classes.size()))];
    const char* ctx = pickContext();
    const char* id = choices_.percent(5) ? nullptr : ADObject::defaultObjID();
    operation_ = std::string("new ") + cls + "@" + (ctx ? ctx : "null") + (id ? "" : " (null ID)");
    ++tally_.operations["new"];
    std::unique_ptr<ADObject> h(DSRegistration::create(cls, ctx, id));
    if (!present(h.get())) return fail("no object made");
    if (std::strcmp((*h)->whoAmI(), cls) != 0) return fail(std::string("made a ") + (*h)->whoAmI());
    if (std::strcmp((*h)->objID(), ADObject::defaultObjID()) == 0) return fail("kept the default ID as its identity");
    if (std::strcmp((*h)->context(), ctx ? ctx : "") != 0)
        return fail("made in context " + std::string((*h)->context()));
    if ((*h)->_get_useCount() != 1) return fail("new object with use count " + std::to_string((*h)->_get_useCount()));
    if (DSRegistrar::findObj(cls, (*h)->objID(), (*h)->context()) != h->impl())
        return fail("new object " + describe(h.get()) + " is not the one found by its identity");
    if ((*h)->objID()[0] == '#') lastGenerated_ = std::atol((*h)->objID() + 1);
    slots_[static_cast<std::size_t>(freeSlot())] = std::move(*h);
}

void Driver::byIdentity() {
    ++tally_.operations["identity"];
    std::string cls, id, ctx;
    if (choices_.percent(40)) {
        std::vector<_ADObject*> live = registeredObjects();
        if (live.empty()) return;
        sortByCreation(live);
        _ADObject* o = live[choices_.below(static_cast<std::uint32_t>(live.size()))];
        cls = o->whoAmI(), id = o->objID(), ctx = o->context();
    } else {
        const auto& classes = creatableClasses();
        cls = classes[choices_.below(static_cast<std::uint32_t>(classes.size()))];
        const char* c = pickContext();
        ctx = c ? c : "";
        id = ids[choices_.below(4)];
        // Now and then an ID of the form the default ID is given, next to the
        // last one handed out: the objects made later must still register.
        if (probeGeneratedIds && lastGenerated_ && choices_.percent(5))
            id = "#" + std::to_string(lastGenerated_ + 1 + choices_.below(3));
    }
    operation_ = "by identity " + cls + ":" + id + "@" + ctx;
    _ADObject* before = DSRegistrar::findObj(cls.c_str(), id.c_str(), ctx.c_str());
    int count = before ? before->_get_useCount() : 0;
    std::unique_ptr<ADObject> h(DSRegistration::create(cls.c_str(), ctx.c_str(), id.c_str()));
    if (!present(h.get())) return fail("no object");
    if (before) {
        if (h->impl() != before) return fail("a second object for a live identity");
        if (before->_get_useCount() != count + 1) return fail("sharing did not count the new handle");
    } else {
        if (std::strcmp((*h)->objID(), id.c_str()) != 0 || std::strcmp((*h)->context(), ctx.c_str()) != 0)
            return fail("made with identity " + describe(h.get()));
        if (DSRegistrar::findObj(cls.c_str(), id.c_str(), ctx.c_str()) != h->impl()) return fail("not registered");
    }
    slots_[static_cast<std::size_t>(freeSlot())] = std::move(*h);
}

void Driver::copyHandle() {
    int i = pickHeld(nullptr, nullptr);
    if (i < 0) return;
    ADObject& from = slots_[static_cast<std::size_t>(i)];
    std::size_t j = static_cast<std::size_t>(freeSlot());
    switch (choices_.below(4)) {
        case 0:
            operation_ = "copy " + describe(&from);
            ++tally_.operations["copy"];
            slots_[j] = from;
            break;
        case 1: {
            operation_ = "new handle on " + describe(&from);
            ++tally_.operations["copy"];
            std::unique_ptr<ADObject> h(from->createNewHandle());
            if (!h || !(*h == from)) return fail("createNewHandle answered another object");
            slots_[j] = std::move(*h);
            break;
        }
        case 2:
            operation_ = "self-assign " + describe(&from);
            ++tally_.operations["copy"];
            {
                const ADObject& same = from;
                from = same;
            }
            break;
        default:
            operation_ = "move " + describe(&from);
            ++tally_.operations["copy"];
            if (j != static_cast<std::size_t>(i)) slots_[j] = std::move(from);
            break;
    }
}

void Driver::dropHandle() {
    int i = pickHeld(nullptr, nullptr);
    if (i < 0) return;
    operation_ = "drop " + describe(&slots_[static_cast<std::size_t>(i)]);
    ++tally_.operations["drop"];
    slots_[static_cast<std::size_t>(i)] = ADObject();
}

void Driver::releaseAll() {
    operation_ = "release the repository";
    ++tally_.operations["release"];
    DSRegistrar::releaseAll();
    // Only what the driver holds is left, with every role and end emptied.
    DSRegistrar::forEach([&](_ADObject* o) {
        for (const RoleRow& r : rowsOf(o).roles)
            if ((o->*r.row->getter.role)()->count() != 0) fail(std::string(o->whoAmI()) + " keeps a role member");
        if (isLink(o) && (!asLink(o)->endSlot(0).isEmpty() || !asLink(o)->endSlot(1).isEmpty()))
            fail(std::string(o->whoAmI()) + " keeps an end");
    });
}

// ---- deletion, status and misuse --------------------------------------------

// A caller lets a deleted object go: every handle the run holds on it is dropped.
void Driver::letGo(_ADObject* o) {
    for (ADObject& h : slots_)
        if (h == o) h = ADObject();
}

// markDeleted on a link takes it out of both ends' roles, empties its ends and
// takes it off the registry; on any other object it only takes it off. An
// object whose deleted bit is already set stays as it is (a link still leaves
// its ends). A list given takes the object when it is taken off.
void Driver::markDeleted() {
    ADObject target;
    if (choices_.percent(60)) {
        target = pickLink(false);
    } else if (int i = pickHeld(nullptr, nullptr); i >= 0) {
        target = slots_[static_cast<std::size_t>(i)];
    }
    if (target.isEmpty()) return;
    _ADObject* o = target.impl();
    bool withList = choices_.percent(50);
    operation_ = "mark deleted " + describe(&target) + (withList ? " into a list" : "");
    ++tally_.operations["mark deleted"];
    bool wasDeleted = (o->status() & adStatusDeleted) != 0;
    bool wasRegistered = isRegistered(o);
    ADObject ends[2];
    if (isLink(o))
        for (int e = 0; e < 2; ++e) ends[e] = asLink(o)->endSlot(e);

    Snapshot before;
    before.take(slots_);
    {
        DSModelCollection list;
        o->markDeleted(withList ? &list : nullptr, 0);
        long listed = withList && !wasDeleted ? 1 : 0;
        if (list.count() != listed || (listed && !(*list.at(0) == target)))
            return fail("the list holds " + std::to_string(list.count()) + " objects");
    }
    if (!(o->status() & adStatusDeleted) || o->getChangeFlag(nullptr) != 8) return fail("not marked deleted");
    if (isRegistered(o) != (wasDeleted && wasRegistered)) return fail("registered after markDeleted");
    if (!notified().notes.empty()) return fail("notified " + notified().notes[0].second);
    if (isLink(o)) {
        for (int e = 0; e < 2; ++e) {
            if (!asLink(o)->endSlot(e).isEmpty()) return fail(std::string("kept its ") + endName[e]);
            if (!ends[e].isEmpty() && roleOf(ends[e].impl(), o->whoAmI(), e)->indexOf(&target) >= 0)
                return fail(std::string("still in the role of its former ") + endName[e]);
        }
    } else {
        // Apart from the registry, nothing changes.
        Snapshot now;
        now.take(slots_);
        for (std::size_t i = 0; i < now.objects.size(); ++i)
            if (now.objects[i] == o) {
                auto& w = now.words[now.starts[i].first + 2];
                w = wasRegistered;
            }
        if (now.words != before.words) return fail("graph changed by " + before.firstDifference(now));
    }
    letGo(o);
}

// A registry walk whose visitor deletes links: the chosen links, and every
// link in the roles of the chosen objects. What the deleted links alone held
// goes with them; every visit finds a registered object.
void Driver::walkDeletingLinks() {
    std::vector<_ADObject*> live = registeredObjects();
    if (live.empty()) return;
    sortByCreation(live);
    std::unordered_set<_ADObject*> chosen;
    operation_ = "walk deleting the links of";
    for (std::uint32_t n = 1 + choices_.below(3); n > 0; --n) {
        _ADObject* o = live[choices_.below(static_cast<std::uint32_t>(live.size()))];
        if (chosen.insert(o).second) operation_.append(" ").append(o->whoAmI()).append(":").append(o->objID());
    }
    ++tally_.operations["walk deleting links"];

    // The links that go; held here, so each can be looked at afterwards.
    std::vector<ADObject> doomed;
    for (_ADObject* o : live) {
        if (!chosen.count(o)) continue;
        if (isLink(o))
            doomed.emplace_back(o);
        else
            for (ADObject& l : linksInRoles(o)) doomed.push_back(std::move(l));
    }
    std::unordered_set<_ADObject*> doomedLinks;
    std::unordered_map<_ADObject*, int> heldByDoomed;  // handles the doomed links' ends hold
    std::unordered_set<_ADObject*> bitBefore;
    for (const ADObject& l : doomed) {
        if (!doomedLinks.insert(l.impl()).second) continue;
        for (int e = 0; e < 2; ++e)
            if (!asLink(l.impl())->endSlot(e).isEmpty()) ++heldByDoomed[asLink(l.impl())->endSlot(e).impl()];
        if (l->status() & adStatusDeleted) bitBefore.insert(l.impl());
    }
    // What stays registered: a doomed link only when its deleted bit was set
    // already; any other object unless the doomed links held its last handles.
    std::unordered_set<_ADObject*> stays;
    for (_ADObject* o : live)
        if (doomedLinks.count(o) ? bitBefore.count(o) != 0 : o->_get_useCount() > heldByDoomed[o]) stays.insert(o);

    std::unordered_set<_ADObject*> visited;
    DSRegistrar::forEach([&](_ADObject* o) {
        if (!isRegistered(o)) fail("visited " + std::string(o->whoAmI()) + ":" + o->objID() + ", not registered");
        visited.insert(o);
        if (!chosen.count(o)) return;
        if (isLink(o))
            o->markDeleted(nullptr, 0);
        else
            for (ADObject& l : linksInRoles(o)) l->markDeleted(nullptr, 0);
    });
    if (!failure_.empty()) return;
    for (_ADObject* o : live)
        if (!visited.count(o) && stays.count(o))
            return fail("the walk missed " + std::string(o->whoAmI()) + ":" + o->objID());
    std::vector<_ADObject*> after = registeredObjects();
    if (after.size() != stays.size()) {
        return fail(std::to_string(after.size()) + " objects registered after the walk, not " +
                    std::to_string(stays.size()));
    }
    for (_ADObject* o : after)
        if (!stays.count(o)) return fail(std::string(o->whoAmI()) + ":" + o->objID() + " is still registered");
    for (const ADObject& l : doomed) {
        if (!asLink(l.impl())->endSlot(krSource).isEmpty() || !asLink(l.impl())->endSlot(krTarget).isEmpty())
            return fail(describe(&l) + " kept an end");
        if (!(l->status() & adStatusDeleted)) return fail(describe(&l) + " is not marked deleted");
    }
    for (const ADObject& l : doomed) letGo(l.impl());
}

// Sets or clears the deleted bit directly: the object stays registered, and
// when its last handle goes no registry entry may stay behind.
void Driver::deletedBit() {
    int i = pickHeld(nullptr, nullptr);
    if (i < 0) return;
    _ADObject* o = slots_[static_cast<std::size_t>(i)].impl();
    bool set = choices_.percent(70);
    operation_ =
        std::string(set ? "set" : "clear") + " the deleted bit of " + describe(&slots_[static_cast<std::size_t>(i)]);
    ++tally_.operations["deleted bit"];
    if (set)
        o->setStatus(adStatusDeleted);
    else
        o->clearStatus(adStatusDeleted);
    if ((o->getChangeFlag(nullptr) == 8) != set)
        return fail("change flag " + std::to_string(o->getChangeFlag(nullptr)));
    if (!isRegistered(o)) return fail("no longer registered");
}

// Adds to a role what does not belong there: an empty handle, an object that
// is no link, a link of another class (2498), a link of the role's class at
// another object (2499), a link that is there already (2441). Every one is
// refused and nothing changes, the cursor included.
void Driver::misuseRole() {
    int i = pickHeld([](const ADObject& h, const void*) { return !rowsOf(h.impl()).roles.empty(); }, nullptr);
    if (i < 0) return;
    _ADObject* owner = slots_[static_cast<std::size_t>(i)].impl();
    const auto& roles = rowsOf(owner).roles;
    const RoleRow& r = roles[choices_.below(static_cast<std::uint32_t>(roles.size()))];
    DSModelCollection* role = (owner->*r.row->getter.role)();
    const char* linkClass = adRoleLinkClass(*r.row);

    std::vector<_ADObject*> live = registeredObjects();
    sortByCreation(live);
    std::vector<_ADObject*> fit;
    ADObject element;
    long expected = 2498;
    switch (choices_.below(5)) {
        case 0:
            break;  // an empty handle
        case 1:
            for (_ADObject* o : live)
                if (!isLink(o)) fit.push_back(o);
            break;
        case 2:
            for (_ADObject* o : live)
                if (isLink(o) && std::strcmp(o->whoAmI(), linkClass) != 0) fit.push_back(o);
            break;
        case 3:
            expected = 2499;
            for (_ADObject* o : live)
                if (isLink(o) && std::strcmp(o->whoAmI(), linkClass) == 0 && !(asLink(o)->endSlot(r.end) == owner))
                    fit.push_back(o);
            break;
        default:
            expected = 2441;
            for (const ADObject& h : *role) fit.push_back(h.impl());
            break;
    }
    if (expected != 2498 || !fit.empty()) {
        if (fit.empty()) return;
        element = fit[choices_.below(static_cast<std::uint32_t>(fit.size()))];
    }
    std::uint32_t how = choices_.below(3);
    long position = static_cast<long>(choices_.below(static_cast<std::uint32_t>(role->count() + 4))) - 2;
    operation_ = std::string("add ") + describe(&element) + " to " + owner->whoAmI() + ":" + owner->objID() + "." +
                 r.row->name +
                 (how == 0   ? " last"
                  : how == 1 ? " first"
                             : " after " + std::to_string(position));
    ++tally_.operations["misuse role"];

    long cursor = role->indexOf();
    Snapshot before;
    before.take(slots_);
    std::unique_ptr<KVException> e;
    try {
        if (how == 0)
            role->addLast(element);
        else if (how == 1)
            role->addFirst(element);
        else
            role->addAfter(element, position);
    } catch (KVException* thrown) {
        e.reset(thrown);
    }
    if (!e) return fail("accepted");
    ++tally_.roleRefused[e->number()];
    if (e->number() != expected)
        return fail("refused with " + std::to_string(e->number()) + ", expected " + std::to_string(expected));
    const char* want2498[] = {linkClass, element.isEmpty() ? "" : element->whoAmI(), r.row->name};
    const char* want2499[] = {linkClass, r.row->name, endName[r.end]};
    std::string where = std::to_string(role->indexOf(&element));
    const char* want2441[] = {linkClass, where.c_str()};
    const char* const* want = expected == 2498 ? want2498 : expected == 2499 ? want2499 : want2441;
    int texts = expected == 2441 ? 2 : 3;
    if (e->textCount() != texts) return fail(std::to_string(e->textCount()) + " texts: " + e->message());
    for (int t = 0; t < texts; ++t)
        if (std::strcmp(e->text(t), want[t]) != 0) return fail("texts " + e->message());
    if (role->indexOf() != cursor) return fail("the cursor moved");
    Snapshot now;
    now.take(slots_);
    if (now.words != before.words) return fail("a refused addition changed " + before.firstDifference(now));
}

// ---- link operations --------------------------------------------------------

void Driver::createLink() {
    const LinkClass& lc = linkClasses()[choices_.below(static_cast<std::uint32_t>(linkClasses().size()))];
    ++tally_.operations["create link"];
    auto pick = [&](int end) -> ADObject {
        std::uint32_t r = choices_.below(100);
        if (r < 84) return pickEnd(lc.endClass[end]);
        int i = r < 92 ? pickHeld(nullptr, nullptr) : -1;
        return i >= 0 ? slots_[static_cast<std::size_t>(i)] : ADObject();
    };
    ADObject source = pick(krSource);
    bool nullSource = choices_.percent(2), nullTarget = choices_.percent(2);
    bool sourceFits = present(&source) && source->isKindOf(lc.endClass[krSource]);
    DSModelCollection* sourceRole = sourceFits ? roleOf(source.impl(), lc.name, krSource) : nullptr;
    ADObject target;
    if (sourceRole && sourceRole->count() && choices_.percent(15))  // aim at a duplicate
        target = *asLink(sourceRole->at(choices_.below(static_cast<std::uint32_t>(sourceRole->count())))->impl())
                      ->getTarget();
    else
        target = pick(krTarget);
    bool placeAfter = lc.ordered() && choices_.percent(50);
    ADObject after;
    if (placeAfter) {
        std::uint32_t r = choices_.below(100);
        if (r < 50 && sourceRole && sourceRole->count())
            after = *sourceRole->at(choices_.below(static_cast<std::uint32_t>(sourceRole->count())));
        else if (r < 80 && pickHeld(nullptr, nullptr) >= 0)
            after = slots_[static_cast<std::size_t>(pickHeld(nullptr, nullptr))];
    }
    ADObject* s = nullSource ? nullptr : &source;
    ADObject* t = nullTarget ? nullptr : &target;
    operation_ = std::string("link ") + lc.name + " " + describe(s) + " -> " + describe(t) +
                 (placeAfter ? " after " + describe(&after) : "");

    // The expected outcome, in the order the checks are made.
    long expected = 0;
    bool leavesLink = false;  // the target setter throws inside the constructor
    if (!present(s) || !present(t) || !sourceFits) {
        expected = 2498;
    } else {
        for (const ADObject& l : *sourceRole)
            if (*asLink(l.impl())->getTarget() == target) expected = 2441;
        if (!expected) {
            leavesLink = true;
            DSModelCollection* targetRole =
                target->isKindOf(lc.endClass[krTarget]) ? roleOf(target.impl(), lc.name, krTarget) : nullptr;
            if (!targetRole)
                expected = 2498;
            else if (std::strcmp(source->context(), target->context()) != 0)
                expected = 2510;
            else if (lc.controllerTest(krTarget) && targetRole->count() != 0 &&
                     controllerOf(source.impl()) != controllerOf(target.impl()))
                expected = 2514;
            else
                leavesLink = false;
        }
    }
    long afterAt = sourceRole && present(&after) ? sourceRole->indexOf(&after) : -1;

    Snapshot before;
    before.take(slots_);
    std::unique_ptr<ADLink> made;
    ADObject* a = after.isEmpty() && choices_.percent(50) ? nullptr : &after;
    long actual = thrownBy([&] { made.reset(ewswtarnCreateLink(lc.name, s, t, a, placeAfter)); });
    if (!checkThrowOutcome(expected, actual, "creation")) return;
    if (actual) {
        // Nothing new is registered, or the one link left in its source's role.
        std::vector<_ADObject*> added;
        DSRegistrar::forEach([&](_ADObject* o) {
            if (!before.contains(o)) added.push_back(o);
        });
        _ADObject* left = nullptr;
        if (leavesLink) {
            if (added.size() != 1) return fail(std::to_string(added.size()) + " objects left by a refused creation");
            left = added[0];
            if (std::strcmp(left->whoAmI(), lc.name) != 0 || !(asLink(left)->endSlot(krSource) == source) ||
                !asLink(left)->endSlot(krTarget).isEmpty())
                return fail("the link left behind is not the half-made link");
            long want = placeAfter ? afterAt + 1 : sourceRole->count() - 1;
            ADObject l(left);
            if (sourceRole->indexOf(&l) != want)
                return fail("the half-made link stands at the wrong place in its source's role");
        } else if (!added.empty()) {
            ADObject first(added[0]);
            return fail("a refused creation left " + describe(&first) + " registered");
        }
        Snapshot now;
        now.take(slots_, left);
        if (now.words != before.words) return fail("a refused creation changed " + before.firstDifference(now));
        return;
    }
    if (!present(made.get())) return fail("no link made");
    _KRLink* link = asLink(made->impl());
    if (!(link->endSlot(krSource) == source) || !(link->endSlot(krTarget) == target)) return fail("ends not as given");
    long want = placeAfter ? afterAt + 1 : sourceRole->count() - 1;
    if (sourceRole->indexOf(made.get()) != want)
        return fail("new link at " + std::to_string(sourceRole->indexOf(made.get())) + " of its source's role, not " +
                    std::to_string(want));
    DSModelCollection* targetRole = roleOf(target.impl(), lc.name, krTarget);
    if (targetRole->indexOf(made.get()) != targetRole->count() - 1)
        return fail("new link not last in its target's role");
    if (!link->endChanged(adEndSource) || link->endChanged(adEndTarget) != placeAfter)
        return fail("end change bits after creation");
    if (choices_.percent(50)) slots_[static_cast<std::size_t>(freeSlot())] = std::move(*made);
}

void Driver::setLinkEnd() {
    ADObject link = pickLink(false);
    if (link.isEmpty()) return;
    _KRLink* l = asLink(link.impl());
    const LinkClass& lc = *linkClassNamed(l->whoAmI());
    int end = static_cast<int>(choices_.below(2));
    ADObject next;
    std::uint32_t r = choices_.below(100);
    if (r < 75)
        next = pickEnd(lc.endClass[end]);
    else if (r < 83)
        next = l->endSlot(1 - end);
    else if (r < 90 && pickHeld(nullptr, nullptr) >= 0)
        next = slots_[static_cast<std::size_t>(pickHeld(nullptr, nullptr))];
    ADObject* n = r >= 95 ? nullptr : &next;
    omSetProcessing how = pickHow(choices_);
    operation_ = std::string("set ") + endName[end] + " of " + describe(&link) + " to " + describe(n) + " how " +
                 std::to_string(how);
    ++tally_.operations["set end"];

    ADObject& slot = l->endSlot(end);
    ADObject& other = l->endSlot(1 - end);
    bool bit = l->endChanged(end == krSource ? adEndSource : adEndTarget);
    long expected = 0;
    bool proceeds = true, moves = false;
    if ((how & omStore) && (!present(n) || !(*n)->isKindOf(lc.endClass[end]))) {
        expected = 2498;
    } else if ((how & omKeepChanged) && bit) {
        proceeds = false;
    } else if (how & omStore) {
        DSModelCollection* role = roleOf(n->impl(), lc.name, end);
        if (!other.isEmpty() && std::strcmp((*n)->context(), other->context()) != 0)
            expected = 2510;
        else if (!slot.isEmpty() && slot == *n)
            proceeds = false;
        else if (lc.controllerTest(end) && !other.isEmpty() && role->count() != 0 &&
                 controllerOf(other.impl()) != controllerOf(n->impl()))
            expected = 2514;
        else
            moves = true;
    }
    bool bitAfter = bit;
    if (proceeds && (how & omSetChanged)) bitAfter = true;
    if (proceeds && (how & omClearChanged)) bitAfter = false;

    Snapshot before;
    before.take(slots_);
    long actual = thrownBy([&] { (end == krSource ? l->_set_source(n, how) : l->_set_target(n, how)); });
    if (!checkThrowOutcome(expected, actual, "end setter")) return;
    std::size_t notes = expected || !proceeds || !(how & (omStore | omSetChanged)) ? 0 : 1;
    if (notified().notes.size() != notes) return fail(std::to_string(notified().notes.size()) + " notifications");
    if (notes && notified().notes[0] != std::make_pair(static_cast<_ADObject*>(l), std::string(endName[end])))
        return fail("notified " + notified().notes[0].second);
    unsigned char mask = end == krSource ? adEndSource : adEndTarget;
    if (actual || !moves) {
        bool bitNow = l->endChanged(mask);
        if (bitNow != (actual ? bit : bitAfter)) return fail("end change bit");
        // Apart from that bit, the graph is as it was.
        Snapshot now;
        l->setEndChanged(mask, bit);
        now.take(slots_);
        l->setEndChanged(mask, bitNow);
        if (now.words != before.words) return fail("graph changed by " + before.firstDifference(now));
        return;
    }
    if (!(slot == *n)) return fail("end not stored");
    DSModelCollection* role = roleOf(n->impl(), lc.name, end);
    if (role->indexOf(&link) != role->count() - 1) return fail("not appended to the new end's role");
    if (l->endChanged(mask) != bitAfter) return fail("end change bit");
}

void Driver::setSourceAfter() {
    ADObject link = pickLink(true);
    if (link.isEmpty()) return;
    _KRLink* l = asLink(link.impl());
    const LinkClass& lc = *linkClassNamed(l->whoAmI());
    ADObject next;
    std::uint32_t r = choices_.below(100);
    if (r < 80)
        next = pickEnd(lc.endClass[krSource]);
    else if (r < 90)
        next = l->endSlot(krSource);
    DSModelCollection* role = present(&next) ? roleOf(next.impl(), lc.name, krSource) : nullptr;
    ADObject after;
    r = choices_.below(100);
    if (r < 40 && role && role->count())
        after = *role->at(choices_.below(static_cast<std::uint32_t>(role->count())));
    else if (r < 60)
        after = link;
    else if (r < 80 && pickHeld(nullptr, nullptr) >= 0)
        after = slots_[static_cast<std::size_t>(pickHeld(nullptr, nullptr))];
    ADObject* a = choices_.percent(10) ? nullptr : &after;
    omSetProcessing how = pickHow(choices_);
    operation_ = "set source of " + describe(&link) + " to " + describe(&next) + " after " + describe(a) + " how " +
                 std::to_string(how);
    ++tally_.operations["set source after"];

    bool bit = l->endChanged(adEndSource);
    long expected = 0;
    bool proceeds = true, moves = false;
    if ((how & omKeepChanged) && bit)
        proceeds = false;
    else if ((how & omStore) && next.isEmpty())
        expected = 2498;
    else if ((how & omStore) && l->endSlot(krSource) == next)
        proceeds = false;
    else if (how & omStore)
        moves = true;
    long want = 0;
    if (moves && present(a)) want = role->indexOf(a) + 1;

    Snapshot before;
    before.take(slots_);
    long actual = thrownBy([&] { l->setSourceAfter(&next, a, how); });
    if (!checkThrowOutcome(expected, actual, "ordered source setter")) return;
    bool bitAfter = bit;
    if (proceeds && !actual && (how & omSetChanged)) bitAfter = true;
    if (proceeds && !actual && (how & omClearChanged)) bitAfter = false;
    if (l->endChanged(adEndSource) != bitAfter) return fail("source change bit");
    if (!moves) {
        Snapshot now;
        l->setEndChanged(adEndSource, bit);
        now.take(slots_);
        l->setEndChanged(adEndSource, bitAfter);
        if (now.words != before.words) return fail("graph changed by " + before.firstDifference(now));
        return;
    }
    if (!(l->endSlot(krSource) == next)) return fail("source not stored");
    if (role->indexOf(&link) != want)
        return fail("placed at " + std::to_string(role->indexOf(&link)) + ", not " + std::to_string(want));
}

void Driver::moveInSource() {
    ADObject link = pickLink(true);
    if (link.isEmpty()) return;
    _KRLink* l = asLink(link.impl());
    ADObject& source = l->endSlot(krSource);
    DSModelCollection* role = source.isEmpty() ? nullptr : roleOf(source.impl(), l->whoAmI(), krSource);
    ADObject after;
    std::uint32_t r = choices_.below(100);
    if (r < 50 && role && role->count())
        after = *role->at(choices_.below(static_cast<std::uint32_t>(role->count())));
    else if (r < 65)
        after = link;
    else if (r < 85 && pickHeld(nullptr, nullptr) >= 0)
        after = slots_[static_cast<std::size_t>(pickHeld(nullptr, nullptr))];
    ADObject* a = choices_.percent(10) ? nullptr : &after;
    omSetProcessing how = pickHow(choices_);
    operation_ = "move " + describe(&link) + " after " + describe(a) + " how " + std::to_string(how);
    ++tally_.operations["move in source"];

    std::vector<_ADObject*> order = role ? members(role) : std::vector<_ADObject*>{};
    auto self = std::find(order.begin(), order.end(), link.impl());
    if (self != order.end()) {
        _ADObject* anchor = present(a) ? a->impl() : nullptr;
        bool anchorIn = anchor && anchor != link.impl() && std::find(order.begin(), order.end(), anchor) != order.end();
        if (!anchor || anchorIn) {
            order.erase(self);
            order.insert(anchor ? std::find(order.begin(), order.end(), anchor) + 1 : order.begin(), link.impl());
        }
    }
    bool bit = l->endChanged(adEndSource);
    if (how & omSetChanged) bit = true;
    if (how & omClearChanged) bit = false;
    l->moveAfterInSource(a, how);
    if (role && members(role) != order) return fail("order in the source's role");
    if (l->endChanged(adEndSource) != bit) return fail("source change bit");
    if (notified().notes.size() != ((how & (omStore | omSetChanged)) ? 1u : 0u)) return fail("notifications");
}

// ---- attributes -------------------------------------------------------------

void Driver::setAttribute() {
    int i = pickHeld(nullptr, nullptr);
    if (i < 0) return;
    _ADObject* o = slots_[static_cast<std::size_t>(i)].impl();
    const auto& rows = rowsOf(o).attributes;
    if (rows.empty()) return;
    const ADAttributeEntry* row = rows[choices_.below(static_cast<std::uint32_t>(rows.size()))];
    omSetProcessing how = pickHow(choices_);
    ++tally_.operations["set attribute"];
    const std::string type = row->type;
    // Values as text, so one comparison serves every type.
    std::string oldValue, newValue;
    std::function<void()> set;
    if (type == "string") {
        static const char* const texts[] = {nullptr, "", "A", "HOSPITAL", "A LONGER VALUE OF SOME WIDTH"};
        const char* v = texts[choices_.below(5)];
        auto read = [o, row] {
            char* s = (o->*row->getter.str)();
            return s ? "'" + std::string(s) + "'" : "null";
        };
        oldValue = read();
        newValue = v ? "'" + std::string(v) + "'" : "null";
        set = [o, row, v, how] { (o->*row->setter.str)(v, how); };
    } else if (type == "boolean") {
        int v = static_cast<int>(choices_.below(2));
        oldValue = std::to_string((o->*row->getter.boolean)());
        newValue = std::to_string(v);
        set = [o, row, v, how] { (o->*row->setter.boolean)(v, how); };
    } else if (type == "short") {
        auto v = static_cast<short>(static_cast<int>(choices_.below(7)) - 3);
        oldValue = std::to_string((o->*row->getter.shortv)());
        newValue = std::to_string(v);
        set = [o, row, v, how] { (o->*row->setter.shortv)(v, how); };
    } else if (type == "ushort") {
        auto v = static_cast<unsigned short>(choices_.below(4) * 21845);
        oldValue = std::to_string((o->*row->getter.ushortv)());
        newValue = std::to_string(v);
        set = [o, row, v, how] { (o->*row->setter.ushortv)(v, how); };
    } else if (type == "long") {
        long v = static_cast<long>(choices_.below(5)) - 2;
        oldValue = std::to_string((o->*row->getter.longv)());
        newValue = std::to_string(v);
        set = [o, row, v, how] { (o->*row->setter.longv)(v, how); };
    } else {
        char v = "\0YN*"[choices_.below(4)];
        oldValue = std::to_string((o->*row->getter.charv)());
        newValue = std::to_string(v);
        set = [o, row, v, how] { (o->*row->setter.charv)(v, how); };
    }
    operation_ = std::string("set ") + o->whoAmI() + "." + row->name + " from " + oldValue + " to " + newValue +
                 " how " + std::to_string(how);
    bool bit = o->getChangeFlag(row->name) != 0;
    bool nameAttribute = row->flags == adRowNameAttribute;
    bool acts = !((how & omKeepChanged) && bit) && !((how & omStore) && oldValue == newValue);
    std::string want = acts && (how & omStore) ? newValue : oldValue;
    bool bitAfter = bit;
    if (acts && !nameAttribute && (how & omSetChanged)) bitAfter = true;
    if (acts && !nameAttribute && (how & omClearChanged)) bitAfter = false;

    set();
    std::string now;
    if (type == "string") {
        char* s = (o->*row->getter.str)();
        now = s ? "'" + std::string(s) + "'" : "null";
    } else if (type == "boolean")
        now = std::to_string((o->*row->getter.boolean)());
    else if (type == "short")
        now = std::to_string((o->*row->getter.shortv)());
    else if (type == "ushort")
        now = std::to_string((o->*row->getter.ushortv)());
    else if (type == "long")
        now = std::to_string((o->*row->getter.longv)());
    else
        now = std::to_string((o->*row->getter.charv)());
    if (now != want) return fail("value is " + now);
    if ((o->getChangeFlag(row->name) != 0) != bitAfter) return fail("change bit");
    std::size_t notes = acts && (how & (omStore | omSetChanged)) ? 1 : 0;
    if (notified().notes.size() != notes) return fail(std::to_string(notified().notes.size()) + " notifications");
}

void Driver::setChangeBit() {
    int i = pickHeld(nullptr, nullptr);
    if (i < 0) return;
    _ADObject* o = slots_[static_cast<std::size_t>(i)].impl();
    const auto& rows = rowsOf(o).attributes;
    omSetProcessing how = choices_.below(16);
    std::uint32_t r = choices_.below(100);
    const char* name = nullptr;
    if (r < 70 && !rows.empty())
        name = rows[choices_.below(static_cast<std::uint32_t>(rows.size()))]->name;
    else if (r < 85 && !rowsOf(o).roles.empty())
        name = rowsOf(o).roles[choices_.below(static_cast<std::uint32_t>(rowsOf(o).roles.size()))].row->name;
    else if (r < 95)
        name = "noSuchRow";
    operation_ =
        std::string("change bit ") + o->whoAmI() + "." + (name ? name : "null") + " how " + std::to_string(how);
    ++tally_.operations["change bit"];
    o->setChangeBit(name, how);
    if (r < 70 && name && (o->getChangeFlag(name) != 0) != (how != omClearChanged)) return fail("change bit");
}

// ---- checks -------------------------------------------------------------------

bool Driver::checkThrowOutcome(long expected, long actual, const char* what) {
    if (actual) ++tally_.thrown[actual];
    if (expected == actual) return true;
    fail(std::string(what) + (actual ? " threw " + std::to_string(actual) : std::string(" did not throw")) +
         (expected ? ", expected " + std::to_string(expected) : ", expected no exception"));
    return false;
}

// The library's check of the whole graph, with the handles the driver holds,
// so that use counts must come out exact.
bool Driver::check() {
    const std::vector<std::string> faults = kr::checkGraph(&slots_, 1);
    if (!faults.empty()) fail(faults.front());
    return failure_.empty();
}

std::string runSeeded(std::uint64_t seed, std::uint64_t operations, Tally* tally) {
    SeededChoices choices(seed);
    Driver driver(choices);
    for (std::uint64_t i = 0; i < operations && driver.step(); ++i) {
    }
    driver.finish();
    if (tally) tally->add(driver.tally());
    if (driver.failure().empty()) return {};
    return "seed " + std::to_string(seed) + ", " + driver.failure() + "\n  replay: random_long --seed " +
           std::to_string(seed) + " --operations " + std::to_string(driver.tally().steps);
}

}  // namespace krrandom
