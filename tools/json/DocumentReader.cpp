// DocumentReader.cpp — the first pass of an import: documents read against
// their views and the class tables into a plan, without changing the
// repository; DocumentChecks.cpp then checks the plan as a whole.
#include <krmwtarn/json/DocumentPlan.h>

#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <cstdint>
#include <cstring>

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

}  // namespace viewdoc::plan
