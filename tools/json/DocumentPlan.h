// DocumentPlan.h — what a set of documents asks of the repository, read and
// checked before anything is made: every object and link by identity, each
// link's two ends, the attribute values, and for every role the order its new
// links join it in. Reading a plan never changes the repository (it only looks
// up what already lives there); building it (DocumentImport.cpp) does, and can
// undo all of it.
#pragma once

#include "tools/json/ViewDocument.h"

#include <string>
#include <unordered_map>
#include <vector>

struct _classStruct;

namespace viewdoc::plan {

enum Side : int { kSource = 0, kTarget = 1 };

// One object or link of the documents, by identity (class, ID, version).
struct Object {
    std::string cls, id, version;
    std::string at;                  // the first place that gives it (a JSON pointer)
    long mention = 0;                // order of first mention in the documents
    bool link = false;
    _ADObject* existing = nullptr;   // the live object of this identity, if any
    // Links: the object at each end (-1 while unknown) and where it was given.
    int end[2] = {-1, -1};
    std::string endAt[2];
};

// An attribute value the documents give an object.
struct Value {
    int object;
    const ADAttributeEntry* row;
    const nlohmann::json* value;
    std::string at;
};

// A place in a role array: the link listed there.
struct Listed {
    int link;
    std::string at;
};

// One role of one object: the role of link class `linkClass` on `side`.
struct Role {
    int owner;
    std::string linkClass;
    Side side;
    std::string name;                       // the role's row name on the owner's class
    bool single = false;                    // the row allows one link (one-to-one, many-to-one)
    std::vector<std::vector<Listed>> lists;  // the orders the documents give, one per array and copy
    std::vector<int> links;                 // the new links joining it, by first mention
    std::vector<int> order;                 // the same, in the order they join it (at its end)
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
    std::string at;
};

struct Plan {
    std::vector<Object> objects;
    std::vector<Value> values;
    std::vector<Role> roles;
    std::vector<Document> documents;
    // New links in the order their source ends are set, then their target ends.
    std::vector<int> joins[2];
    // The roles whose links are then put in the documents' order.
    std::vector<int> arranged;

    std::unordered_map<std::string, int> byIdentity;
    std::unordered_map<std::string, int> valueIndex;
    std::unordered_map<std::string, int> roleIndex;

    bool isNew(int o) const { return !objects[o].existing; }
};

// Reads and checks documents into a plan. Throws DocumentError at the first
// place that does not fit the views, the model or the rest of the documents.
class Reader {
public:
    explicit Reader(Plan& plan) : plan_(plan) {}
    // One document {"view": NAME, "root": {...}} found at `at`.
    void document(const nlohmann::json& doc, const std::string& at);
    // The checks over all documents read: ends, duplicates, one-link roles,
    // orders; then the order of every end to be set.
    void finish();

private:
    // An object of `list` (null: given by identity only); `exact`: of its class exactly.
    int node(const nlohmann::json& j, const DLLViewList* list, const std::string& at, bool exact);
    void entries(int self, const nlohmann::json& j, const DLLViewList* list, const std::string& at);
    void endEntry(int self, const DLLViewElem* e, const nlohmann::json& far, const std::string& selfAt,
                  const std::string& at);
    void roleEntry(int self, const std::vector<const DLLViewElem*>& elems, const nlohmann::json& items,
                   const std::string& at);
    int identity(const nlohmann::json& j, const std::string& at);
    void setEnd(int link, Side side, int object, const std::string& linkAt, const std::string& at);
    void addValue(int object, const ADAttributeEntry* row, const nlohmann::json& v, const std::string& at);
    int role(int owner, const std::string& linkClass, Side side);

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
// Answers a new handle on each document's root.
std::vector<ADObject> build(Plan& plan);

// Helpers on the class tables shared by the reader and the builder.
bool kindOf(const char* cls, const char* ancestor);
const ADAttributeEntry* rowOf(const char* cls, const char* name);
// The row of link class `linkClass` at `side` ("source" or "target").
const ADAttributeEntry& endRow(const char* linkClass, Side side);

}  // namespace viewdoc::plan
