// DocumentReader.cpp — the first pass of an import: documents read against
// their views and the class tables into a plan, and checked as a whole (every
// link with both ends, no duplicate, one link in a one-to-one role, orders that
// agree), without changing the repository.
#include <krmwtarn/json/DocumentPlan.h>

#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <queue>
#include <unordered_set>

using nlohmann::json;

namespace viewdoc::plan {

bool kindOf(const char* cls, const char* ancestor) {
    for (const _classStruct* c = DSRegistration::findClass(cls); c;
         c = c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr)
        if (!std::strcmp(c->className, ancestor)) return true;
    return false;
}

const ADAttributeEntry* rowOf(const char* cls, const char* name) { return adFindClassRow(cls, name); }

const ADAttributeEntry& endRow(const char* linkClass, Side side) {
    return DSRegistration::findClass(linkClass)->attributes[side];
}

namespace {
const char* const kSideName[2] = {"source", "target"};
const char* const kNul = "a string holding a NUL character is refused";

bool isEnd(const DLLViewElem* e) { return !std::strcmp(e->name, "adTarget") || !std::strcmp(e->name, "adSource"); }
Side sideOf(const DLLViewElem* end) { return !std::strcmp(end->name, "adTarget") ? kTarget : kSource; }

// A link class: below ADLink, its table opening with its source and target rows.
bool isLinkClass(const char* cls) {
    const _classStruct* c = DSRegistration::findClass(cls);
    return c && c->attributes && c->attributes[0].name && !std::strcmp(c->attributes[0].name, "source") &&
           c->attributes[1].name && !std::strcmp(c->attributes[1].name, "target") && kindOf(cls, "ADLink");
}

const ADAttributeEntry* attributeOf(const char* cls, const char* name) {
    const ADAttributeEntry* r = rowOf(cls, name);
    return r && adIsAttributeRow(*r) && r->setter.str && r->getter.str ? r : nullptr;
}

const ADAttributeEntry* roleOf(const char* cls, const char* name) {
    const ADAttributeEntry* r = rowOf(cls, name);
    return r && adIsRoleRow(*r) ? r : nullptr;
}

std::vector<const DLLViewElem*> byAlias(const DLLViewList* list, const std::string& alias) {
    std::vector<const DLLViewElem*> v;
    for (int i = 0; i < list->count(); ++i)
        if (list->element(i) && alias == list->element(i)->alias) v.push_back(list->element(i));
    return v;
}

// The copy of a role that takes this link: the link's class, and the class of
// the object at its far end (a role stands once per concrete class). When no
// copy takes the far end's class and several would take others, `farAlias`
// and `takes` say which end and which classes.
const DLLViewElem* copyFor(const std::vector<const DLLViewElem*>& elems, const json& link, const char** farAlias,
                           std::string* takes) {
    const std::string& linkClass = link["@class"].get_ref<const std::string&>();
    const DLLViewElem* sameLink = nullptr;
    const char* alias = nullptr;
    int others = 0;
    for (const DLLViewElem* e : elems) {
        if (!e->list || linkClass != e->list->className) continue;
        if (!sameLink) sameLink = e;
        bool listsEnd = false;
        for (int i = 0; i < e->list->count(); ++i) {
            const DLLViewElem* end = e->list->element(i);
            if (!end || !isEnd(end)) continue;
            listsEnd = true;
            auto far = link.find(end->alias);
            if (far == link.end()) continue;
            if (end->viewType || (end->flags & 1)) return e;
            if (!end->list || !far->is_object() || !far->contains("@class") || !(*far)["@class"].is_string()) continue;
            if ((*far)["@class"] == end->list->className) return e;
            alias = end->alias;
            *takes += (others++ ? ", " : "") + std::string(end->list->className);
        }
        if (!listsEnd) return e;
    }
    if (others > 1) *farAlias = alias;
    return sameLink;
}

// A string member of an identity: present, and without NUL. Null when not.
const std::string* text(const json& j, const char* key, const char** problem) {
    auto it = j.find(key);
    if (it == j.end() || !it->is_string()) return nullptr;
    const std::string& s = it->get_ref<const std::string&>();
    if (s.find('\0') != std::string::npos) {
        *problem = kNul;
        return nullptr;
    }
    return &s;
}

// The range of a number attribute's type, as its width holds it.
bool fits(const ADValueTypeInfo& type, const json& v) {
    long long lo = type.low, hi = type.high;
    if (v.is_number_unsigned()) return v.get<std::uint64_t>() <= static_cast<std::uint64_t>(hi);
    long long n = v.get<std::int64_t>();
    return n >= lo && n <= hi;
}

// What is wrong with a value for an attribute row, or an empty text.
std::string badValue(const ADAttributeEntry& row, const json& v) {
    const char* t = row.type;
    const ADValueTypeInfo* type = adFindValueType(t);
    ADValueForm form = type ? type->form : ADValueForm::Integer;
    bool ok;
    if (form == ADValueForm::Text)
        ok = v.is_null() || v.is_string();
    else if (form == ADValueForm::Char)
        ok = v.is_string() && v.get_ref<const std::string&>().size() <= 1;
    else
        ok = v.is_number_integer();
    if (!ok) return std::string("a ") + t + " value is expected";
    if (v.is_string() && v.get_ref<const std::string&>().find('\0') != std::string::npos) return kNul;
    if (v.is_number_integer() && !fits(type ? *type : adValueTypeInfo(ADValueType::Long), v))
        return std::string("the value does not fit a ") + t;
    return {};
}

bool endFits(const char* linkClass, Side side, const char* farClass) {
    return kindOf(farClass, endRow(linkClass, side).type);
}

// The role collection of `o` that holds links of `linkClass` at `side`.
DSModelCollection* roleCollection(_ADObject* o, const char* linkClass, Side side) {
    const ADAttributeEntry* row = DLLView_findRow(o, endRow(linkClass, side).inverse);
    return row && adIsRoleRow(*row) && row->getter.role ? (o->*row->getter.role)() : nullptr;
}
}  // namespace

// ---- reading ----------------------------------------------------------------

std::string Plan::where(Place p) const {
    std::vector<Place> up;
    for (; p >= 0; p = steps[p].parent) up.push_back(p);
    std::string out;
    for (auto it = up.rbegin(); it != up.rend(); ++it)
        out = steps[*it].key ? pointer(out, *steps[*it].key) : pointer(out, steps[*it].index);
    return out;
}

void Reader::refuse(Place at, const std::string& message) const { throw DocumentError(plan_.where(at), message); }
void Reader::refuse(Place at, const char* key, const std::string& message) const {
    throw DocumentError(plan_.where(at, key), message);
}

void Reader::document(const json& doc, Place at) {
    if (!doc.is_object()) refuse(at, "a document is an object");
    for (auto it = doc.begin(); it != doc.end(); ++it)
        if (it.key() != "view" && it.key() != "root")
            refuse(at, it.key().c_str(), "a document holds only 'view' and 'root'");
    const char* problem = "a view name is needed";
    const std::string* name = text(doc, "view", &problem);
    if (!name) refuse(at, "view", problem);
    DLLViewType* view = DLLViewType::find(name->c_str());
    if (!view) refuse(at, "view", "no view named '" + *name + "'");
    auto root = doc.find("root");
    if (root == doc.end()) refuse(at, "root", "the root object is missing");
    const DLLViewList* list = view->_get_adViewList();
    if (!list) refuse(at, "view", "view '" + *name + "' has no tree");
    path_.assign(1, view);
    int rootObject = node(*root, list, plan_.step(at, root.key()), false);
    plan_.documents.push_back({view, rootObject, &doc, at});
}

int Reader::identity(const json& j, Place at) {
    if (!j.is_object()) refuse(at, "an object is expected");
    for (auto it = j.begin(); it != j.end(); ++it) {
        const std::string& key = it.key();
        if (!key.empty() && key[0] == '@' && key != "@class" && key != "@id" && key != "@version")
            refuse(at, key.c_str(), "unknown key '" + key + "'; an object carries @class, @id and @version");
    }
    const char* problem = "the class is missing";
    const std::string* cls = text(j, "@class", &problem);
    if (!cls) refuse(at, "@class", problem);
    if (!DSRegistration::findClass(cls->c_str()) || !DSRegistration::componentOf(cls->c_str())->factory())
        refuse(at, "@class", "unknown class '" + *cls + "'");
    problem = "the identity is missing";
    const std::string* id = text(j, "@id", &problem);
    if (!id) refuse(at, "@id", problem);
    if (*id == ADObject::defaultObjID())
        refuse(at, "@id",
               std::string("the default object ID '") + ADObject::defaultObjID() +
                   "' names no object; an object is given by its own identity");
    problem = "the version is missing";
    const std::string* version = text(j, "@version", &problem);
    if (!version) refuse(at, "@version", problem);

    auto [found, fresh] =
        plan_.byIdentity.emplace(Plan::Identity{*cls, *id, *version}, static_cast<int>(plan_.objects.size()));
    if (fresh) {
        Object o;
        o.cls = cls;
        o.id = id;
        o.version = version;
        o.at = at;
        o.mention = mentions_++;
        o.link = isLinkClass(cls->c_str());
        o.existing = DSRegistrar::findObj(cls->c_str(), id->c_str(), version->c_str());
        plan_.objects.push_back(o);
    }
    return found->second;
}

int Reader::node(const json& j, const DLLViewList* list, Place at, bool exact) {
    int self = identity(j, at);
    const std::string& cls = *plan_.objects[self].cls;
    if (!list) {
        if (j.size() > 3) refuse(at, "an object reached again is given by identity only");
        return self;
    }
    if (exact && cls != list->className)
        refuse(at, "@class", "the link's end is not a " + std::string(list->className));
    if (!kindOf(cls.c_str(), list->className)) refuse(at, "@class", "'" + cls + "' is not a " + list->className);
    entries(self, j, list, at);
    return self;
}

void Reader::entries(int self, const json& j, const DLLViewList* list, Place at) {
    const char* cls = plan_.objects[self].cls->c_str();
    for (auto it = j.begin(); it != j.end(); ++it) {
        const std::string& key = it.key();
        if (!key.empty() && key[0] == '@') continue;
        Place here = plan_.step(at, key);
        std::vector<const DLLViewElem*> elems = byAlias(list, key);
        if (elems.empty()) refuse(here, "unknown attribute '" + key + "' for " + list->className);
        const DLLViewElem* e = elems.front();
        if (isEnd(e)) {
            endEntry(self, e, *it, at, here);
        } else if (e->list) {
            roleEntry(self, elems, *it, here);
        } else {
            const ADAttributeEntry* row = attributeOf(cls, e->name);
            if (!row) refuse(here, "'" + std::string(cls) + "' has no attribute '" + e->name + "'");
            std::string bad = badValue(*row, *it);
            if (!bad.empty()) refuse(here, bad);
            addValue(self, row, *it, here);
        }
    }
}

void Reader::endEntry(int self, const DLLViewElem* e, const json& far, Place selfAt, Place at) {
    const char* cls = plan_.objects[self].cls->c_str();
    if (!plan_.objects[self].link) refuse(at, "'" + std::string(cls) + "' is not a link and has no far end");
    // As the expander: a delegation shows the object by the delegated view,
    // or by identity only where that view is already being expanded.
    bool delegated = e->viewType || (e->flags & 1);
    const DLLViewList* farList = e->list;
    if (delegated) {
        farList = e->viewType ? e->viewType->_get_adViewList() : nullptr;
        if (std::find(path_.begin(), path_.end(), e->viewType) != path_.end()) farList = nullptr;
        if (far.is_object() && far.size() <= 3) farList = nullptr;
    }
    if (delegated && farList) path_.push_back(e->viewType);
    int farObject = node(far, farList, at, !delegated && farList != nullptr);
    if (delegated && farList) path_.pop_back();
    Side side = sideOf(e);
    const std::string& farClass = *plan_.objects[farObject].cls;
    if (!endFits(cls, side, farClass.c_str())) refuse(at, "a " + farClass + " does not fit this end of " + cls);
    setEnd(self, side, farObject, selfAt, at);
}

void Reader::roleEntry(int self, const std::vector<const DLLViewElem*>& elems, const json& items, Place at) {
    const char* cls = plan_.objects[self].cls->c_str();
    if (!items.is_array()) refuse(at, "a role is an array of links");
    std::unordered_map<int, Place> listed;                           // link → its place in this array
    std::vector<std::pair<const DLLViewElem*, std::size_t>> copies;  // copy → its order in the role
    for (std::size_t i = 0; i < items.size(); ++i) {
        Place itemAt = plan_.step(at, i);
        const json& item = items[i];
        if (!item.is_object()) refuse(itemAt, "@class", "the link class is missing");
        const char* problem = "the link class is missing";
        const std::string* itemClass = text(item, "@class", &problem);
        if (!itemClass) refuse(itemAt, "@class", problem);
        const char* farAlias = nullptr;
        std::string takes;
        const DLLViewElem* copy = copyFor(elems, item, &farAlias, &takes);
        if (farAlias)
            throw DocumentError(
                pointer(plan_.where(itemAt, farAlias), "@class"),
                "the link's end is a " + item[farAlias]["@class"].get<std::string>() + ", not one of " + takes);
        if (!copy)
            refuse(itemAt, "@class", "'" + *itemClass + "' does not stand on role '" + elems.front()->alias + "'");
        const char* linkClass = copy->list->className;
        const ADAttributeEntry* roleRow = roleOf(cls, copy->name);
        if (!roleRow || std::strcmp(adRoleLinkClass(*roleRow), linkClass) != 0 || !isLinkClass(linkClass))
            refuse(itemAt, "role '" + std::string(copy->name) + "' of " + cls + " holds no " + linkClass);
        Side side = adRoleEnd(*roleRow) == adSource ? kSource : kTarget;
        int link = node(item, copy->list, itemAt, true);
        setEnd(link, side, self, itemAt, itemAt);
        auto [first, fresh] = listed.emplace(link, itemAt);
        if (!fresh)
            refuse(itemAt, "the link is listed twice in this role (also at " + plan_.where(first->second) + ")");
        Role& r = plan_.roles[role(self, linkClass, side)];
        auto c = std::find_if(copies.begin(), copies.end(), [&](const auto& p) { return p.first == copy; });
        if (c == copies.end()) {
            r.lists.emplace_back();
            c = copies.insert(copies.end(), {copy, r.lists.size() - 1});
        }
        r.lists[c->second].push_back({link, itemAt});
    }
}

void Reader::setEnd(int link, Side side, int object, Place linkAt, Place at) {
    Object& l = plan_.objects[link];
    if (l.end[side] < 0) {
        l.end[side] = object;
        l.endAt[side] = at;
    } else if (l.end[side] != object) {
        refuse(linkAt, "@id", "this " + *l.cls + " joins other objects at " + plan_.where(l.endAt[side]));
    }
}

void Reader::addValue(int object, const ADAttributeEntry* row, const json& v, Place at) {
    auto [found, fresh] = plan_.valueIndex.emplace(std::make_pair(object, row), static_cast<int>(plan_.values.size()));
    if (fresh) {
        plan_.values.push_back({object, row, &v, at});
    } else if (*plan_.values[found->second].value != v) {
        refuse(at, "another value for '" + std::string(row->name) + "' of this object is given at " +
                       plan_.where(plan_.values[found->second].at));
    }
}

int Reader::role(int owner, const char* linkClass, Side side) {
    const ADAttributeEntry& end = endRow(linkClass, side);
    auto [found, fresh] = plan_.roleIndex.emplace(std::make_pair(owner, &end), static_cast<int>(plan_.roles.size()));
    if (fresh) {
        Role r;
        r.owner = owner;
        r.linkClass = DSRegistration::findClass(linkClass)->className;
        r.side = side;
        r.name = end.inverse;
        r.single = (end.flags & adFlagOneToOne) != 0;
        plan_.roles.push_back(std::move(r));
    }
    return found->second;
}

// ---- checks over the whole plan ----------------------------------------------

void Reader::finish() {
    checkEnds();
    checkDuplicates();
    placeInRoles();
    orderJoins();
}

void Reader::checkEnds() {
    for (Object& l : plan_.objects) {
        if (!l.link) continue;
        for (Side side : {kSource, kTarget}) {
            if (!l.existing) {
                if (l.end[side] < 0) refuse(l.at, "the " + *l.cls + " link is given without its " + kSideName[side]);
                continue;
            }
            auto* live = static_cast<_ADLink*>(l.existing);
            ADObject* end = side == kSource ? live->getSource() : live->getTarget();
            if (!end || end->isEmpty())
                refuse(l.at, "the " + *l.cls + " link stands in the repository without its " + kSideName[side]);
            if (l.end[side] >= 0 && plan_.objects[l.end[side]].existing != end->impl())
                refuse(l.at, "@id", "this " + *l.cls + " joins other objects in the repository");
        }
    }
}

void Reader::checkDuplicates() {
    // Between new links of the documents, and against the links a source
    // already holds (each such role read once).
    std::unordered_map<std::pair<std::string_view, std::uint64_t>, int, PairHash> made;  // class, both ends
    std::unordered_map<std::pair<_ADObject*, std::string_view>, std::unordered_set<_ADObject*>, PairHash> held;
    for (std::size_t i = 0; i < plan_.objects.size(); ++i) {
        const Object& l = plan_.objects[i];
        if (!l.link || l.existing) continue;
        std::uint64_t ends =
            static_cast<std::uint64_t>(l.end[kSource]) << 32 | static_cast<std::uint32_t>(l.end[kTarget]);
        auto [first, fresh] = made.emplace(std::make_pair(std::string_view(*l.cls), ends), static_cast<int>(i));
        if (!fresh)
            refuse(l.at, "a second " + *l.cls + " joins the same two objects (the first at " +
                             plan_.where(plan_.objects[first->second].at) + ")");
        _ADObject* source = plan_.objects[l.end[kSource]].existing;
        _ADObject* target = plan_.objects[l.end[kTarget]].existing;
        if (!source || !target) continue;
        auto [targets, unread] = held.try_emplace(std::make_pair(source, std::string_view(*l.cls)));
        if (unread)
            if (DSModelCollection* role = roleCollection(source, l.cls->c_str(), kSource))
                for (const ADObject& h : *role)
                    if (*l.cls == h->whoAmI())
                        targets->second.insert(static_cast<_ADLink*>(h.impl())->getTarget()->impl());
        if (targets->second.count(target))
            refuse(l.at, "a second " + *l.cls + " joins the same two objects (the repository holds one)");
    }
}

void Reader::placeInRoles() {
    for (std::size_t i = 0; i < plan_.objects.size(); ++i) {
        const Object& l = plan_.objects[i];
        if (!l.link || l.existing) continue;
        for (Side side : {kSource, kTarget})
            plan_.roles[role(l.end[side], l.cls->c_str(), side)].links.push_back(static_cast<int>(i));
    }
    for (Role& r : plan_.roles) {
        if (r.links.empty() && r.lists.empty()) continue;
        const Object& owner = plan_.objects[r.owner];
        DSModelCollection* held = owner.existing ? roleCollection(owner.existing, r.linkClass, r.side) : nullptr;
        long heldCount = held ? held->count() : 0;
        if (r.single && !r.links.empty() && heldCount + static_cast<long>(r.links.size()) > 1) {
            const Object& second = plan_.objects[r.links[heldCount ? 0 : 1]];
            refuse(second.endAt[r.side],
                   "role '" + std::string(r.name) + "' of " + *owner.cls + " " + *owner.id +
                       " holds one link; a second is given here (" +
                       (heldCount ? std::string("the repository holds one")
                                  : "the first at " + plan_.where(plan_.objects[r.links[0]].endAt[r.side])) +
                       ")");
        }
        orderRole(r);
    }
}

// The order of a role's links: every order the documents give for the role
// (an array, one copy of it) is kept; where they say nothing, the links the
// repository holds stay first and in their order, then the new ones by first
// mention. An ordered role at the source is rearranged to the documents'
// order; any other role takes new links at its end only and its held order as
// it is.
void Reader::orderRole(Role& r) {
    if (r.lists.empty()) {
        r.order = r.links;  // mention order, behind whatever the role holds
        return;
    }
    const Object& owner = plan_.objects[r.owner];
    const bool ordered = r.side == kSource && (endRow(r.linkClass, kSource).flags & adFlagOrdered);
    // The order graph: the held links first (nodes 0 .. held-1), then the new ones.
    std::vector<_ADObject*> held;
    if (owner.existing)
        if (DSModelCollection* role = roleCollection(owner.existing, r.linkClass, r.side))
            for (const ADObject& h : *role) held.push_back(h.impl());
    const int nh = static_cast<int>(held.size());
    const int n = nh + static_cast<int>(r.links.size());
    std::unordered_map<int, int> newNode;
    for (std::size_t i = 0; i < r.links.size(); ++i) newNode.emplace(r.links[i], nh + static_cast<int>(i));
    std::unordered_map<_ADObject*, int> heldNode;
    auto nodeOf = [&](const Listed& x) {
        if (plan_.isNew(x.link)) return newNode.at(x.link);
        if (heldNode.empty())
            for (int i = 0; i < nh; ++i) heldNode.emplace(held[i], i);
        auto it = heldNode.find(plan_.objects[x.link].existing);
        if (it == heldNode.end())
            refuse(x.at, "role '" + std::string(r.name) + "' does not hold this link in the repository");
        return it->second;
    };
    struct Edge {
        int from, to;
        Place at;  // the place of `to` in the list that asks for it; -1: the repository's order
    };
    std::vector<Edge> edges;
    if (!ordered)
        for (int i = 1; i < nh; ++i) edges.push_back({i - 1, i, -1});
    for (const std::vector<Listed>& list : r.lists) {
        for (std::size_t i = 1; i < list.size(); ++i) {
            const Listed& a = list[i - 1];
            const Listed& b = list[i];
            int from = nodeOf(a), to = nodeOf(b);
            if (!ordered && from >= nh && to < nh)
                refuse(b.at, "role '" + std::string(r.name) +
                                 "' holds this link in the repository already; a new link cannot come before it");
            edges.push_back({from, to, b.at});
        }
    }
    std::vector<std::vector<int>> out(n), in(n);
    std::vector<int> pending(n, 0);
    for (std::size_t k = 0; k < edges.size(); ++k) {
        out[edges[k].from].push_back(static_cast<int>(k));
        in[edges[k].to].push_back(static_cast<int>(k));
        ++pending[edges[k].to];
    }
    // Kahn's order, the held links first, then the earliest mentioned.
    auto key = [&](int v) {
        return v < nh ? std::make_pair(0L, static_cast<long>(v))
                      : std::make_pair(1L, plan_.objects[r.links[v - nh]].mention);
    };
    auto later = [&](int a, int b) { return key(a) > key(b); };
    std::priority_queue<int, std::vector<int>, decltype(later)> free(later);
    for (int v = 0; v < n; ++v)
        if (!pending[v]) free.push(v);
    std::vector<bool> placed(n, false);
    std::vector<int> order;
    while (!free.empty()) {
        int v = free.top();
        free.pop();
        placed[v] = true;
        order.push_back(v);
        for (int k : out[v])
            if (!--pending[edges[k].to]) free.push(edges[k].to);
    }
    if (static_cast<int>(order.size()) < n) {
        // The lists contradict each other or the repository: walk back from an
        // unplaced link over unplaced predecessors until one repeats, and name
        // the cycle's latest list place and its earliest.
        int v = 0;
        while (placed[v]) ++v;
        std::vector<int> stepAt(n, -1), trail;
        while (stepAt[v] < 0) {
            stepAt[v] = static_cast<int>(trail.size());
            int k = *std::find_if(in[v].begin(), in[v].end(), [&](int e) { return !placed[edges[e].from]; });
            trail.push_back(k);
            v = edges[k].from;
        }
        int latest = -1, earliest = -1;
        bool repository = false;
        for (std::size_t s = static_cast<std::size_t>(stepAt[v]); s < trail.size(); ++s) {
            if (edges[trail[s]].at < 0) {
                repository = true;
                continue;
            }
            if (latest < 0 || trail[s] > latest) latest = trail[s];
            if (earliest < 0 || trail[s] < earliest) earliest = trail[s];
        }
        refuse(edges[latest].at, "this order of role '" + std::string(r.name) + "' contradicts " +
                                     (repository ? std::string("the order the repository holds")
                                                 : "the one given at " + plan_.where(edges[earliest].at)));
    }
    r.order.clear();
    for (int v : order)
        if (v >= nh) r.order.push_back(r.links[v - nh]);
    // Joining at the end gives this order unless a new link comes before a
    // held one or the held ones change places.
    bool asJoined = true;
    for (int k = 0; k < n && asJoined; ++k) asJoined = order[k] == k || (k >= nh && order[k] >= nh);
    if (asJoined) return;
    for (int v : order) r.arrangement.emplace_back(v < nh ? -1 : r.links[v - nh], v < nh ? held[v] : nullptr);
    plan_.arranged.push_back(static_cast<int>(&r - plan_.roles.data()));
}

// The order the new links' ends are set in: every source end first (a link
// joins its source's role with no other end to test against, as the link
// constructor does), then every target end, each role in its order. Target
// ends are set controllers first (the controller test then sees what controls
// both ends), by the depth of the end they control.
void Reader::orderJoins() {
    const int n = static_cast<int>(plan_.objects.size());
    std::vector<std::vector<int>> up(n);  // the objects that control each object
    std::vector<int> controlled(n, -1);   // per new link, the end it controls
    for (int i = 0; i < n; ++i) {
        const Object& l = plan_.objects[i];
        if (!l.link || l.existing) continue;
        for (Side side : {kSource, kTarget}) {
            if (!(endRow(l.cls->c_str(), side).flags & adFlagControlling)) continue;
            int other = l.end[1 - side];
            controlled[i] = other;
            up[other].push_back(l.end[side]);
            up[i].push_back(l.end[side]);  // a link is controlled by what controls its controlling end
            break;
        }
    }
    std::vector<int> depth(n, -1);
    std::vector<bool> open(n, false);
    auto depthOf = [&](auto&& self, int o) -> int {
        if (depth[o] >= 0) return depth[o];
        if (open[o]) return 0;  // a cycle of controllers: the model's walk stops too
        open[o] = true;
        int d = 0;
        for (int c : up[o]) d = std::max(d, 1 + self(self, c));
        open[o] = false;
        return depth[o] = d;
    };
    for (Side side : {kSource, kTarget}) {
        auto key = [&](int link) {
            long d = side == kTarget && controlled[link] >= 0 ? depthOf(depthOf, controlled[link]) : 0;
            return std::make_pair(d, plan_.objects[link].mention);
        };
        // Merge the roles' orders, the smallest key among their next links first.
        using Head = std::pair<std::pair<long, long>, std::pair<int, std::size_t>>;  // key, (role, position)
        std::priority_queue<Head, std::vector<Head>, std::greater<Head>> heads;
        for (std::size_t r = 0; r < plan_.roles.size(); ++r)
            if (plan_.roles[r].side == side && !plan_.roles[r].order.empty())
                heads.push({key(plan_.roles[r].order[0]), {static_cast<int>(r), 0}});
        std::vector<int>& joins = plan_.joins[side];
        joins.clear();
        while (!heads.empty()) {
            auto [k, at] = heads.top();
            heads.pop();
            const std::vector<int>& order = plan_.roles[at.first].order;
            joins.push_back(order[at.second]);
            if (at.second + 1 < order.size()) heads.push({key(order[at.second + 1]), {at.first, at.second + 1}});
        }
    }
}

}  // namespace viewdoc::plan
