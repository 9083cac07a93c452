// ViewDocument.cpp — JSON export and import of view expansions.
#include "tools/json/ViewDocument.h"

#include <krmwtarn/model/framework/Registration.h>
#include <krmwtarn/platform/common/KVException.h>
#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <cstring>
#include <memory>
#include <set>
#include <vector>

using nlohmann::json;

namespace viewdoc {
namespace {
bool isEnd(const DLLViewElem* e) { return !std::strcmp(e->name, "adTarget") || !std::strcmp(e->name, "adSource"); }

json valueJson(const DLLViewValue& v) {
    if (v.isNull) return nullptr;
    if (!std::strcmp(v.type, "string") || !std::strcmp(v.type, "char")) return v.text;
    return v.number;
}
}  // namespace

json toJson(const DLLViewNode& node) {
    json out = json::object();
    _ADObject* o = node.object;
    out["@class"] = o->whoAmI();
    out["@id"] = o->objID();
    out["@version"] = o->context();
    for (const DLLViewEntry& e : node.entries) {
        const char* key = e.element->alias;
        switch (e.kind) {
            case DLLViewEntry::Value:
                out[key] = valueJson(e.value);
                break;
            case DLLViewEntry::Role: {
                // Copies of a role for several classes share their alias: one array.
                json& items = out[key];
                if (!items.is_array()) items = json::array();
                for (const DLLViewNode& item : e.items) items.push_back(toJson(item));
                break;
            }
            case DLLViewEntry::End:
                out[key] = toJson(e.items.front());
                break;
        }
    }
    return out;
}

json exportView(DLLViewType* view, _ADObject* root) {
    return json{{"view", view->name()}, {"root", toJson(DLLView_expand(view, root))}};
}

namespace {
// Import in two passes over the document: the first checks everything it can
// without touching the repository; the second makes the objects and links and
// undoes them all if a link rule refuses one, then sets the attributes.
class Importer {
public:
    ADObject* run(const json& doc) {
        if (!doc.is_object()) throw DocumentError("", "a document is an object");
        if (!doc.contains("view") || !doc["view"].is_string()) throw DocumentError("/view", "a view name is needed");
        view_ = DLLViewType::find(doc["view"].get<std::string>().c_str());
        if (!view_) throw DocumentError("/view", "no view named '" + doc["view"].get<std::string>() + "'");
        if (!doc.contains("root")) throw DocumentError("/root", "the root object is missing");
        DLLViewList* list = view_->_get_adViewList();
        checkObject(doc["root"], list, "/root", true);
        ADObject* root = nullptr;
        try {
            root = build(doc["root"], list, "/root");
        } catch (...) {
            undo();
            throw;
        }
        for (auto& [obj, row, value] : values_) set(obj, *row, *value);
        made_.clear();
        return root;
    }

private:
    // ---- first pass: shape, classes, attributes, value types ----
    const DLLViewList* listOfDelegation(const DLLViewElem* e) { return e->viewType ? e->viewType->_get_adViewList() : nullptr; }

    void checkObject(const json& j, const DLLViewList* list, const std::string& at, bool isObject) {
        if (!j.is_object()) throw DocumentError(at, "an object is expected");
        if (!j.contains("@class") || !j["@class"].is_string()) throw DocumentError(at + "/@class", "the class is missing");
        std::string cls = j["@class"];
        const _classStruct* row = DSRegistration::findClass(cls.c_str());
        if (!row || !DSRegistration::componentOf(cls.c_str())->factory())
            throw DocumentError(at + "/@class", "unknown class '" + cls + "'");
        if (isObject) {
            if (!j.contains("@id") || !j["@id"].is_string()) throw DocumentError(at + "/@id", "the identity is missing");
            if (!j.contains("@version") || !j["@version"].is_string())
                throw DocumentError(at + "/@version", "the version is missing");
        }
        if (!list) {
            if (j.size() > 3) throw DocumentError(at, "an object reached again is given by identity only");
            return;
        }
        if (!kindOf(cls.c_str(), list->className))
            throw DocumentError(at + "/@class", "'" + cls + "' is not a " + list->className);
        for (auto it = j.begin(); it != j.end(); ++it) {
            const std::string& key = it.key();
            if (key[0] == '@') continue;
            std::string here = at + "/" + key;
            std::vector<const DLLViewElem*> elems = byAlias(list, key);
            if (elems.empty()) throw DocumentError(here, "unknown attribute '" + key + "' for " + list->className);
            const DLLViewElem* e = elems.front();
            if (isEnd(e)) {
                const DLLViewList* farList = e->list ? e->list : listOfDelegation(e);
                bool delegated = e->viewType != nullptr;
                // A delegated object the other view did not take is given by identity only.
                if (delegated && it->is_object() && it->size() <= 3) farList = nullptr;
                checkObject(*it, farList, here, true);
                if (!delegated && farList && (*it)["@class"] != farList->className)
                    throw DocumentError(here + "/@class", "the link's end is not a " + std::string(farList->className));
                if (!endFits(cls.c_str(), e, (*it)["@class"].get<std::string>().c_str()))
                    throw DocumentError(here, "a " + (*it)["@class"].get<std::string>() + " does not fit this end of " + cls);
            } else if (e->list) {
                if (!it->is_array()) throw DocumentError(here, "a role is an array of links");
                for (size_t i = 0; i < it->size(); ++i) {
                    std::string item = here + "/" + std::to_string(i);
                    const json& link = (*it)[i];
                    if (!link.is_object() || !link.contains("@class") || !link["@class"].is_string())
                        throw DocumentError(item + "/@class", "the link class is missing");
                    const DLLViewElem* copy = copyFor(elems, link);
                    if (!copy) throw DocumentError(item + "/@class", "'" + link["@class"].get<std::string>() + "' does not stand on role '" + key + "'");
                    const ADAttributeEntry* roleRow = roleOf(cls.c_str(), copy->name);
                    if (!roleRow || std::strcmp(adRoleLinkClass(*roleRow), copy->list->className) != 0)
                        throw DocumentError(item, "role '" + std::string(copy->name) + "' of " + cls + " holds no " + copy->list->className);
                    checkObject(link, copy->list, item, true);
                }
            } else {
                const ADAttributeEntry* row = attributeOf(cls.c_str(), e->name);
                if (!row) throw DocumentError(here, "'" + cls + "' has no attribute '" + e->name + "'");
                checkValue(*row, *it, here);
            }
        }
    }

    static void checkValue(const ADAttributeEntry& row, const json& v, const std::string& at) {
        const char* t = row.type;
        bool ok;
        if (!std::strcmp(t, "string")) ok = v.is_null() || v.is_string();
        else if (!std::strcmp(t, "char")) ok = v.is_string() && v.get<std::string>().size() <= 1;
        else ok = v.is_number_integer();
        if (!ok) throw DocumentError(at, std::string("a ") + t + " value is expected");
        if (v.is_number_integer()) {
            long long n = v.get<long long>();
            bool fits = !std::strcmp(t, "short")    ? n >= -32768 && n <= 32767
                        : !std::strcmp(t, "ushort") ? n >= 0 && n <= 65535
                                                    : n >= INT32_MIN && n <= INT32_MAX;
            if (!fits) throw DocumentError(at, std::string("the value does not fit a ") + t);
        }
    }

    static bool kindOf(const char* cls, const char* ancestor) {
        for (const _classStruct* c = DSRegistration::findClass(cls); c;
             c = c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr)
            if (!std::strcmp(c->className, ancestor)) return true;
        return false;
    }

    static const ADAttributeEntry* rowOf(const char* cls, const char* name) {
        for (const _classStruct* c = DSRegistration::findClass(cls); c;
             c = c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr)
            for (const ADAttributeEntry* r = c->attributes; r && r->name; ++r)
                if (!std::strcmp(r->name, name)) return r;
        return nullptr;
    }
    static const ADAttributeEntry* attributeOf(const char* cls, const char* name) {
        const ADAttributeEntry* r = rowOf(cls, name);
        return r && (r->flags & 0xF) == adRowAttribute && r->setter.str ? r : nullptr;
    }
    static const ADAttributeEntry* roleOf(const char* cls, const char* name) {
        const ADAttributeEntry* r = rowOf(cls, name);
        return r && adIsRoleRow(*r) ? r : nullptr;
    }
    // The far object fits the link class's end row.
    static bool endFits(const char* linkClass, const DLLViewElem* e, const char* farClass) {
        const _classStruct* link = DSRegistration::findClass(linkClass);
        if (!link || !link->attributes || !link->attributes[0].name) return false;
        const ADAttributeEntry& end = link->attributes[!std::strcmp(e->name, "adTarget") ? 1 : 0];
        return kindOf(farClass, end.type);
    }

    static std::vector<const DLLViewElem*> byAlias(const DLLViewList* list, const std::string& alias) {
        std::vector<const DLLViewElem*> v;
        for (int i = 0; i < list->count(); ++i)
            if (list->element(i) && alias == list->element(i)->alias) v.push_back(list->element(i));
        return v;
    }
    // The copy of a role that takes this link: the link's class, and the class
    // of the object at its far end (a role stands once per concrete class).
    static const DLLViewElem* copyFor(const std::vector<const DLLViewElem*>& elems, const json& link) {
        const std::string linkClass = link["@class"];
        const DLLViewElem* sameLink = nullptr;
        for (const DLLViewElem* e : elems) {
            if (!e->list || linkClass != e->list->className) continue;
            if (!sameLink) sameLink = e;
            bool listsEnd = false;
            for (int i = 0; i < e->list->count(); ++i) {
                const DLLViewElem* end = e->list->element(i);
                if (!end || !isEnd(end)) continue;
                listsEnd = true;
                if (!link.contains(end->alias)) continue;
                const json& far = link[end->alias];
                if (end->viewType) return e;
                if (end->list && far.is_object() && far.contains("@class") && far["@class"] == end->list->className)
                    return e;
            }
            if (!listsEnd) return e;
        }
        return sameLink;
    }

    // ---- second pass: objects and links ----
    ADObject* object(const json& j) {
        std::string cls = j["@class"], id = j["@id"], version = j["@version"];
        bool existed = DSRegistrar::findObj(cls.c_str(), id.c_str(), version.c_str()) != nullptr;
        std::unique_ptr<ADObject> h(DSRegistration::create(cls.c_str(), version.c_str(), id.c_str()));
        if (!existed) made_.push_back(*h);
        return h.release();
    }

    ADObject* build(const json& j, const DLLViewList* list, const std::string& at) {
        std::unique_ptr<ADObject> self(object(j));
        buildEntries(*self, j, list, at);
        return self.release();
    }

    void buildEntries(ADObject& self, const json& j, const DLLViewList* list, const std::string& at) {
        if (!list) return;
        for (auto it = j.begin(); it != j.end(); ++it) {
            const std::string& key = it.key();
            if (key[0] == '@') continue;
            std::vector<const DLLViewElem*> elems = byAlias(list, key);
            const DLLViewElem* e = elems.front();
            if (!e->list && !isEnd(e)) {
                values_.push_back({self.impl(), attributeOf(self->whoAmI(), e->name), &*it});
                continue;
            }
            if (!e->list || isEnd(e)) continue;  // ends are made by the link's owner
            for (size_t i = 0; i < it->size(); ++i) {
                const json& linkJson = (*it)[i];
                const DLLViewElem* copy = copyFor(elems, linkJson);
                link(self, copy, linkJson, at + "/" + key + "/" + std::to_string(i));
            }
        }
    }

    void link(ADObject& self, const DLLViewElem* roleElem, const json& linkJson, const std::string& at) {
        const DLLViewList* linkList = roleElem->list;
        const ADAttributeEntry* roleRow = roleOf(self->whoAmI(), roleElem->name);
        bool selfIsSource = (roleRow->flags & 0xF) == adRowRoleAtSource;
        // The far end: the list's end element present in the document.
        const DLLViewElem* endElem = nullptr;
        for (int i = 0; i < linkList->count(); ++i)
            if (isEnd(linkList->element(i)) && linkJson.contains(linkList->element(i)->alias)) endElem = linkList->element(i);
        if (!endElem) throw DocumentError(at, "the link names no object at its far end");
        const json& farJson = linkJson[endElem->alias];
        const DLLViewList* farList = endElem->list ? endElem->list : (endElem->viewType ? endElem->viewType->_get_adViewList() : nullptr);
        bool farWhole = farJson.size() > 3;
        std::unique_ptr<ADObject> far(farWhole ? build(farJson, farList, at + "/" + endElem->alias) : object(farJson));
        ADObject* source = selfIsSource ? &self : far.get();
        ADObject* target = selfIsSource ? far.get() : &self;
        // A link keeps its identity: reached again (from its other end, or as
        // the end of another link) it is the same link object.
        const char* linkClass = linkList->className;
        std::unique_ptr<ADObject> linkHandle(object(linkJson));
        auto* l = static_cast<_ADLink*>(linkHandle->impl());
        if (l->getSource()->isEmpty() || l->getTarget()->isEmpty()) {
            if (!l->getSource()->isEmpty() || !l->getTarget()->isEmpty())
                throw DocumentError(at, std::string("the ") + linkClass + " link is reached with one end only");
            try {
                // As the link constructor does: the source first, marked; then the target.
                duplicateTest(linkClass, source, target, at);
                setEnd(l, "source", source, omStore | omSetChanged);
                (*source)->processChangeFlag();
                setEnd(l, "target", target, omStore);
                links_.push_back(*linkHandle);
            } catch (KVException* e) {
                std::string message = e->message();
                delete e;
                throw DocumentError(at, "the link is refused: " + message);
            }
        } else if (!(*l->getSource() == *source) || !(*l->getTarget() == *target)) {
            throw DocumentError(at + "/@id", std::string("this ") + linkClass + " joins other objects elsewhere in the document");
        }
        buildEntries(*linkHandle, linkJson, linkList, at);
    }

    // Sets a link end through its attribute-table row.
    static void setEnd(_ADObject* link, const char* end, ADObject* object, omSetProcessing how) {
        const ADAttributeEntry* row = DLLView_findRow(link, end);
        (link->*row->setter.end)(object, how);
    }

    // Another link of the class between the same two objects is a duplicate.
    static void duplicateTest(const char* linkClass, ADObject* source, ADObject* target, const std::string& at) {
        const _classStruct* link = DSRegistration::findClass(linkClass);
        const ADAttributeEntry* role = DLLView_findRow(source->impl(), link->attributes[0].inverse);
        if (!role || !adIsRoleRow(*role)) return;
        for (const ADObject& h : *(source->impl()->*role->getter.role)())
            if (!std::strcmp(h->whoAmI(), linkClass) && *static_cast<_ADLink*>(h.impl())->getTarget() == *target)
                throw DocumentError(at, std::string("a second ") + linkClass + " joins the same two objects");
    }

    static void set(_ADObject* o, const ADAttributeEntry& row, const json& v) {
        const char* t = row.type;
        if (!std::strcmp(t, "string")) {
            std::string s = v.is_null() ? "" : v.get<std::string>();
            (o->*row.setter.str)(v.is_null() ? nullptr : s.c_str(), omStore);
        } else if (!std::strcmp(t, "char")) {
            std::string s = v.get<std::string>();
            (o->*row.setter.charv)(s.empty() ? '\0' : s[0], omStore);
        } else if (!std::strcmp(t, "boolean")) {
            (o->*row.setter.boolean)(v.get<int>(), omStore);
        } else if (!std::strcmp(t, "short")) {
            (o->*row.setter.shortv)(v.get<short>(), omStore);
        } else if (!std::strcmp(t, "ushort")) {
            (o->*row.setter.ushortv)(v.get<unsigned short>(), omStore);
        } else if (!std::strcmp(t, "long")) {
            (o->*row.setter.longv)(v.get<long>(), omStore);
        }
    }

    // Takes every link made so far out of its ends' roles, then lets the new
    // objects go with their last handles.
    void undo() {
        for (ADObject& l : links_) l->markDeleted(nullptr, 0);
        links_.clear();
        values_.clear();
        made_.clear();
    }

    struct Value {
        _ADObject* object;
        const ADAttributeEntry* row;
        const json* value;
    };
    DLLViewType* view_ = nullptr;
    std::vector<ADObject> made_;
    std::vector<ADObject> links_;
    std::vector<Value> values_;
};
}  // namespace

ADObject* importDocument(const json& document) { return Importer().run(document); }

}  // namespace viewdoc
