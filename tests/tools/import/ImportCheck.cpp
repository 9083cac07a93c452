// ImportCheck.cpp — the repository snapshot, the sample's documents, the check
// of one import and the hostile mutations of documents (see ImportCheck.h).
#include "ImportCheck.h"

#include <krmwtarn/sample/SampleModel.h>
#include <krmwtarn/views/EwswtarnViews.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string_view>

using nlohmann::json;

namespace importcheck {
namespace {
std::string identity(_ADObject* o) { return std::string(o->whoAmI()) + "|" + o->objID() + "|" + o->context(); }

struct Documents {
    std::vector<json> sample, views;
};

const Documents& documents() {
    static const Documents made = [] {
        Documents d;
        DLLView_init::initAll();
        sample::Model m = sample::build();
        for (const auto& [view, root] : sample::documentRoots(m))
            d.sample.push_back(viewdoc::exportView(DLLViewType::find(view), root));
        for (const EwswtarnView& v : ewswtarnViews) {
            _ADObject* root = sample::defaultRoot(m, v.rootClass);
            if (!root) std::abort();  // every view has a root in the sample
            d.views.push_back(viewdoc::exportView(*v.variable, root));
        }
        m = sample::Model();
        DSRegistrar::releaseAll();
        return d;
    }();
    return made;
}

// The tokens of a JSON pointer, unescaped; false if it is not one.
bool tokens(const std::string& where, std::vector<std::string>& out) {
    if (where.empty()) return true;
    if (where[0] != '/') return false;
    std::string token;
    for (std::size_t i = 1; i <= where.size(); ++i) {
        if (i == where.size() || where[i] == '/') {
            out.push_back(token);
            token.clear();
        } else if (where[i] == '~') {
            if (i + 1 >= where.size() || (where[i + 1] != '0' && where[i + 1] != '1')) return false;
            token += where[++i] == '0' ? '~' : '/';
        } else {
            token += where[i];
        }
    }
    return true;
}

// The pointer names a place in the file: every step but the last exists.
bool pointsInto(const json& file, const std::string& where) {
    std::vector<std::string> steps;
    if (!tokens(where, steps)) return false;
    const json* at = &file;
    for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        const std::string& s = steps[i];
        if (at->is_object()) {
            auto it = at->find(s);
            if (it == at->end()) return false;
            at = &*it;
        } else if (at->is_array()) {
            if (s.empty() || s.size() > 9 || !std::all_of(s.begin(), s.end(), ::isdigit) ||
                (s.size() > 1 && s[0] == '0'))
                return false;
            std::size_t n = std::stoul(s);
            if (n >= at->size()) return false;
            at = &(*at)[n];
        } else {
            return false;
        }
    }
    return true;
}

// Every node of a file with where it hangs.
struct Place {
    json* node;
    json* parent;            // null for the file itself
    const std::string* key;  // in an object; else null
    std::size_t first, end;  // the node's subtree: these places in pre-order
};

void places(json& j, json* parent, const std::string* key, std::vector<Place>& out) {
    std::size_t self = out.size();
    out.push_back({&j, parent, key, self, self});
    if (j.is_object())
        for (auto it = j.begin(); it != j.end(); ++it) places(*it, &j, &it.key(), out);
    else if (j.is_array())
        for (json& item : j) places(item, &j, nullptr, out);
    out[self].end = out.size();
}

bool nested(const Place& a, const Place& b) {
    return (b.first >= a.first && b.first < a.end) || (a.first >= b.first && a.first < b.end);
}

json edgeValue(Choices& c) {
    switch (c.below(24)) {
        case 0:
            return nullptr;
        case 1:
            return true;
        case 2:
            return 1.5;
        case 3:
            return -1;
        case 4:
            return 0;
        case 5:
            return 32767;
        case 6:
            return 32768;
        case 7:
            return -32769;
        case 8:
            return 65535;
        case 9:
            return 65536;
        case 10:
            return 2147483647;
        case 11:
            return 2147483648LL;
        case 12:
            return -2147483649LL;
        case 13:
            return json::parse("18446744073709518848");
        case 14:
            return json::parse("18446744073709551615");
        case 15:
            return "";
        case 16:
            return "x";
        case 17:
            return "xy";
        case 18:
            return std::string(1, '\0');
        case 19:
            return std::string("a\0b", 3);
        case 20:
            return json::array();
        case 21:
            return json::object();
        case 22:
            return std::string(300, 'L');
        default:
            return -2147483648LL;
    }
}

std::string edgeText(Choices& c, const std::vector<const std::string*>& fromFile) {
    switch (c.below(8)) {
        case 0:
            return ADObject::defaultObjID();
        case 1:
            return "";
        case 2:
            return std::string("X\0Y", 3);
        case 3:
            return "#" + std::to_string(c.below(100));
        case 4:
            return "a/b~c";
        default:
            return fromFile.empty() ? "Z" : *fromFile[c.below(static_cast<std::uint32_t>(fromFile.size()))];
    }
}

const char* const kClasses[] = {"KVPart",    "ADLink",        "ADObject",         "DSDataElementAlias", "DSSDDAlias",
                                "DSSegment", "DSNoSuchClass", "ADAnnotationText", "DSHasField",         "DSDBDhidam"};
const char* const kKeys[] = {"colour", "@extra", "a/b", "~x", "", "@", "view", "documents", "segments"};
}  // namespace

std::uint32_t SeededChoices::below(std::uint32_t bound) {
    return bound ? std::uniform_int_distribution<std::uint32_t>(0, bound - 1)(engine_) : 0;
}

std::uint32_t ByteChoices::below(std::uint32_t bound) {
    if (!bound) return 0;
    std::uint32_t v = 0;
    for (int i = 0; i < 2 && at_ < size_; ++i) v = v << 8 | data_[at_++];
    return v % bound;
}

std::vector<std::string> snapshot() {
    std::vector<std::string> lines;
    DSRegistrar::forEach([&](_ADObject* o) {
        std::ostringstream s;
        s << identity(o) << " uses=" << o->_get_useCount() << " status=" << o->getChangeFlag(nullptr);
        for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t)) {
            for (ADAttributeEntry* row = t; row->name; ++row) {
                if (adIsRoleRow(*row) && row->getter.role) {
                    s << " " << row->name << "=[";
                    for (const ADObject& h : *(o->*row->getter.role)()) s << identity(h.impl()) << ",";
                    s << "]";
                } else if (adIsEndRow(*row) && row->getter.end) {
                    ADObject* e = (o->*row->getter.end)();
                    s << " " << row->name << "=" << (e && !e->isEmpty() ? identity(e->impl()) : "-") << "/"
                      << o->getChangeFlag(row->name);
                } else if (adIsAttributeRow(*row) && row->getter.str) {
                    DLLViewValue v = DLLView_readValue(o, *row);
                    s << " " << row->name << "=" << (v.isNull ? "null" : v.text + "/" + std::to_string(v.number)) << "/"
                      << o->getChangeFlag(row->name);
                }
            }
        }
        lines.push_back(s.str());
    });
    std::sort(lines.begin(), lines.end());
    return lines;
}

const std::vector<json>& sampleDocuments() { return documents().sample; }
const std::vector<json>& viewDocuments() { return documents().views; }

json file(std::vector<json> docs) {
    json out = json::object();
    json& array = out["documents"] = json::array();
    array.get_ref<json::array_t&>() = std::move(docs);
    return out;
}

std::string importAndCheck(const json& file, bool* imported) {
    std::vector<std::string> before = snapshot();
    std::vector<ADObject> roots;
    try {
        roots = viewdoc::importDocuments(file);
    } catch (const viewdoc::DocumentError& e) {
        if (imported) *imported = false;
        std::string what = e.what();
        if (what.rfind(e.where() + ": ", 0) != 0) return "the message does not open with its place: " + what;
        if (!pointsInto(file, e.where())) return "the place is not in the file: " + what;
        if (snapshot() != before) return "a refused import changed the repository: " + what;
        return "";
    }
    if (imported) *imported = true;
    bool many = file.is_object() && file.contains("documents");
    const json& docs = many ? file["documents"] : file;
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const json& doc = many ? docs[i] : file;
        json again = viewdoc::exportView(DLLViewType::find(doc["view"].get<std::string>().c_str()), roots[i].impl());
        if (again != doc)
            return "document " + std::to_string(i) +
                   " does not come back: " + again.dump(-1, ' ', false, json::error_handler_t::replace).substr(0, 300);
    }
    return "";
}

std::vector<json> shuffledSample(Choices& c) {
    std::vector<json> docs = sampleDocuments();
    for (std::size_t i = docs.size(); i > 1; --i) std::swap(docs[i - 1], docs[c.below(static_cast<std::uint32_t>(i))]);
    return docs;
}

void mutate(json& file, Choices& c) {
    std::vector<Place> all;
    places(file, nullptr, nullptr, all);
    std::vector<Place> arrays, objects, scalars;
    std::vector<const std::string*> ids, versions, classes, views;
    for (const Place& p : all) {
        if (p.node->is_array() && !p.node->empty()) arrays.push_back(p);
        if (p.node->is_object() && p.node->contains("@class")) objects.push_back(p);
        std::string_view key = p.key ? std::string_view(*p.key) : std::string_view();
        if (p.parent && p.parent->is_object() && !p.node->is_structured() && (key.empty() || key[0] != '@'))
            scalars.push_back(p);
        if (!p.node->is_string()) continue;
        const std::string* text = &p.node->get_ref<const std::string&>();
        if (key == "@id") ids.push_back(text);
        if (key == "@version") versions.push_back(text);
        if (key == "@class") classes.push_back(text);
        if (key == "view") views.push_back(text);
    }
    auto pick = [&](const std::vector<Place>& from) -> const Place* {
        return from.empty() ? nullptr : &from[c.below(static_cast<std::uint32_t>(from.size()))];
    };
    auto pickText = [&](const std::vector<const std::string*>& from) {
        return from.empty() ? std::string("Z") : *from[c.below(static_cast<std::uint32_t>(from.size()))];
    };
    const Place* p = nullptr;
    switch (c.below(14)) {
        case 0:  // two elements of an array change places
            if ((p = pick(arrays)) && p->node->size() > 1) {
                auto n = static_cast<std::uint32_t>(p->node->size());
                std::swap((*p->node)[c.below(n)], (*p->node)[c.below(n)]);
            }
            break;
        case 1:  // an element listed twice
            if ((p = pick(arrays))) {
                auto n = static_cast<std::uint32_t>(p->node->size());
                json copy = (*p->node)[c.below(n)];
                p->node->insert(p->node->begin() + c.below(n + 1), std::move(copy));
            }
            break;
        case 2:  // an element or a key dropped
            if (c.below(2) && (p = pick(arrays))) {
                p->node->erase(c.below(static_cast<std::uint32_t>(p->node->size())));
            } else if ((p = pick(all)) && p->parent && p->parent->is_object()) {
                std::string key = *p->key;
                p->parent->erase(key);
            }
            break;
        case 3:  // another identity
            if ((p = pick(objects))) (*p->node)["@id"] = c.below(3) ? pickText(ids) : edgeText(c, ids);
            break;
        case 4:  // another version
            if ((p = pick(objects))) (*p->node)["@version"] = c.below(2) ? std::string("OTHER") : edgeText(c, versions);
            break;
        case 5:  // another class
            if ((p = pick(objects)))
                (*p->node)["@class"] =
                    c.below(2) ? pickText(classes) : std::string(kClasses[c.below(std::size(kClasses))]);
            break;
        case 6:  // a value at the edge of its type, or of another type
            if ((p = pick(scalars))) *p->node = edgeValue(c);
            break;
        case 7:  // an object in the place of another
            if ((p = pick(objects))) {
                const Place* q = pick(objects);
                json copy = *q->node;
                *p->node = std::move(copy);
            }
            break;
        case 8:  // a key nobody knows
            if ((p = pick(objects)) || (p = pick(all))) {
                if (p->node->is_object()) (*p->node)[kKeys[c.below(std::size(kKeys))]] = edgeValue(c);
            }
            break;
        case 9:  // an identity taken over by an object of the same class elsewhere
            if ((p = pick(objects))) {
                const Place* q = pick(objects);
                (*p->node)["@id"] = (*q->node)["@id"];
                (*p->node)["@class"] = (*q->node)["@class"];
                (*p->node)["@version"] = (*q->node)["@version"];
            }
            break;
        case 10:  // documents: swapped, repeated, dropped, another view
            if (file.is_object() && file.contains("documents") && file["documents"].is_array() &&
                !file["documents"].empty()) {
                json& docs = file["documents"];
                auto n = static_cast<std::uint32_t>(docs.size());
                switch (c.below(4)) {
                    case 0:
                        std::swap(docs[c.below(n)], docs[c.below(n)]);
                        break;
                    case 1:
                        docs.push_back(docs[c.below(n)]);
                        break;
                    case 2:
                        docs.erase(c.below(n));
                        break;
                    default: {
                        json& doc = docs[c.below(n)];
                        if (doc.is_object()) doc["view"] = pickText(views);
                    }
                }
            }
            break;
        case 11:  // a role or an end given a scalar or the wrong shape
            if ((p = pick(all)) && p->node->is_structured())
                *p->node = c.below(2) ? edgeValue(c) : json::array({edgeValue(c)});
            break;
        case 12:  // two objects change places
            if ((p = pick(objects))) {
                const Place* q = pick(objects);
                if (!nested(*p, *q)) {
                    json a = *p->node, b = *q->node;
                    *p->node = std::move(b);
                    *q->node = std::move(a);
                }
            }
            break;
        default:  // an object reduced to its identity
            if ((p = pick(objects)))
                *p->node = json{
                    {"@class", (*p->node)["@class"]}, {"@id", (*p->node)["@id"]}, {"@version", (*p->node)["@version"]}};
            break;
    }
}

}  // namespace importcheck
