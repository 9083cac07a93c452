// DocumentPlan.h — what a set of documents asks of the repository, read and
// checked before anything is made: every object and link by identity, each
// link's two ends, the attribute values, and for every role the order its new
// links join it in. Reading a plan never changes the repository (it only looks
// up what already lives there); building it (DocumentImport.cpp) does, and can
// undo all of it. The plan refers into the documents (their strings and
// values), which outlive it.
#pragma once

#include <krmwtarn/json/ViewDocument.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

struct _classStruct;

namespace viewdoc::plan {

enum Side : int { kSource = 0, kTarget = 1 };

// A place in the documents: a step below another place (-1: the file), so
// reading makes no pointer text; the text is made for a message only.
using Place = int;
struct Step {
    Place parent;
    const std::string* key;  // null: an array index
    std::size_t index;
};

// One object or link of the documents, by identity (class, ID, version).
struct Object {
    const std::string* cls;
    const std::string* id;
    const std::string* version;
    Place at;          // the first place that gives it
    long mention = 0;  // order of first mention in the documents
    bool link = false;
    _ADObject* existing = nullptr;  // the live object of this identity, if any
    // Links: the object at each end (-1 while unknown) and where it was given.
    int end[2] = {-1, -1};
    Place endAt[2] = {-1, -1};
};

// An attribute value the documents give an object.
struct Value {
    int object;
    const ADAttributeEntry* row;
    const nlohmann::json* value;
    Place at;
};

// A place in a role array: the link listed there.
struct Listed {
    int link;
    Place at;
};

// One role of one object: the role of link class `linkClass` on `side`.
struct Role {
    int owner;
    const char* linkClass;
    Side side;
    const char* name;                        // the role's row name on the owner's class
    bool single = false;                     // a one-to-one role: one link at most
    std::vector<std::vector<Listed>> lists;  // the orders the documents give, one per array and copy
    std::vector<int> links;                  // the new links joining it, by first mention
    std::vector<int> order;                  // the same, in the order they join it (at its end)
    // An ordered role at the source whose held and new links the documents
    // order otherwise: all of them in that order, each a plan link (held: -1)
    // or a link the role holds. Empty when joining at the end is enough.
    std::vector<std::pair<int, _ADObject*>> arrangement;
};

// A document of the set, for the check that the built graph gives it back.
struct Document {
    DLLViewType* view;
    int root;
    const nlohmann::json* json;
    Place at;
};

struct PairHash {
    template <class A, class B>
    std::size_t operator()(const std::pair<A, B>& p) const noexcept {
        std::size_t h = std::hash<A>()(p.first);
        return h ^ (std::hash<B>()(p.second) + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2));
    }
};

struct Plan {
    std::vector<Step> steps;
    std::vector<Object> objects;
    std::vector<Value> values;
    std::vector<Role> roles;
    std::vector<Document> documents;
    // New links in the order their source ends are set, then their target ends.
    std::vector<int> joins[2];
    // The roles whose links are then put in the documents' order.
    std::vector<int> arranged;

    struct Identity {
        std::string_view cls, id, version;
        bool operator==(const Identity&) const = default;
    };
    struct IdentityHash {
        std::size_t operator()(const Identity& k) const noexcept {
            return PairHash()(std::make_pair(k.cls, PairHash()(std::make_pair(k.id, k.version))));
        }
    };
    std::unordered_map<Identity, int, IdentityHash> byIdentity;
    std::unordered_map<std::pair<int, const ADAttributeEntry*>, int, PairHash> valueIndex;
    // Roles by owner and link class row, the side in the row's lowest bit.
    std::unordered_map<std::pair<int, const ADAttributeEntry*>, int, PairHash> roleIndex;

    bool isNew(int o) const { return !objects[o].existing; }
    Place step(Place parent, const std::string& key) {
        steps.push_back({parent, &key, 0});
        return static_cast<Place>(steps.size() - 1);
    }
    Place step(Place parent, std::size_t index) {
        steps.push_back({parent, nullptr, index});
        return static_cast<Place>(steps.size() - 1);
    }
    // The JSON pointer of a place, and of a key below it.
    std::string where(Place p) const;
    std::string where(Place p, const char* key) const { return pointer(where(p), key); }
};

// Reads and checks documents into a plan. Throws DocumentError at the first
// place that does not fit the views, the model or the rest of the documents.
class Reader {
public:
    explicit Reader(Plan& plan) : plan_(plan) {}
    // One document {"view": NAME, "root": {...}} found at `at`.
    void document(const nlohmann::json& doc, Place at);
    // The checks over all documents read: ends, duplicates, one-link roles,
    // orders; then the order of every end to be set (DocumentChecks.cpp).
    void finish();

private:
    // An object of `list` (null: given by identity only); `exact`: of its class exactly.
    int node(const nlohmann::json& j, const DLLViewList* list, Place at, bool exact);
    void entries(int self, const nlohmann::json& j, const DLLViewList* list, Place at);
    void endEntry(int self, const DLLViewElem* e, const nlohmann::json& far, Place selfAt, Place at);
    void roleEntry(int self, const std::vector<const DLLViewElem*>& elems, const nlohmann::json& items, Place at);
    int identity(const nlohmann::json& j, Place at);
    void setEnd(int link, Side side, int object, Place linkAt, Place at);
    void addValue(int object, const ADAttributeEntry* row, const nlohmann::json& v, Place at);
    int role(int owner, const char* linkClass, Side side);
    [[noreturn]] void refuse(Place at, const std::string& message) const;
    [[noreturn]] void refuse(Place at, const char* key, const std::string& message) const;

    void checkEnds();
    void checkDuplicates();
    void placeInRoles();
    void orderRole(Role& r);
    void orderJoins();

    Plan& plan_;
    long mentions_ = 0;
    std::vector<DLLViewType*> path_;  // delegated views being read, as the expander keeps them
};

// Builds the plan's graph in the repository and checks that every document
// comes back from it; undoes everything and throws DocumentError otherwise.
// Answers a handle on each document's root.
std::vector<ADObject> build(Plan& plan);

// Helpers on the class tables shared by the reader and the builder.
bool kindOf(const char* cls, const char* ancestor);
const ADAttributeEntry* rowOf(const char* cls, const char* name);
// The row of link class `linkClass` at `side` ("source" or "target").
const ADAttributeEntry& endRow(const char* linkClass, Side side);

}  // namespace viewdoc::plan
