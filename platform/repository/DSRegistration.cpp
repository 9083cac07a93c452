// DSRegistration.cpp — the list of component records and class lookup across them.
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <krmwtarn/platform/repository/ADObject.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace {
std::vector<DSRegistration*>& records() {
    static std::vector<DSRegistration*> r;
    return r;
}
struct Found {
    const _classStruct* row;
    DSRegistration* record;
};
// Index of every class row by name, rebuilt when a record comes or goes.
std::unordered_map<std::string_view, Found>& index() {
    static std::unordered_map<std::string_view, Found> i;
    return i;
}
bool& stale() {
    static bool s = true;
    return s;
}
const Found* lookup(const char* name) {
    if (!name) return nullptr;
    if (stale()) {
        index().clear();
        for (DSRegistration* r : records())
            for (_classStruct* c = r->classTable(); c && c->className; ++c) index().emplace(c->className, Found{c, r});
        stale() = false;
    }
    auto it = index().find(name);
    return it == index().end() ? nullptr : &it->second;
}
}  // namespace

DSRegistration::DSRegistration(DSFactoryFn factory, _classStruct* classTable, const char* componentName)
    : factory_(factory), classTable_(classTable), componentName_(componentName) {
    records().push_back(this);
    stale() = true;
}

DSRegistration::~DSRegistration() {
    auto& r = records();
    r.erase(std::remove(r.begin(), r.end(), this), r.end());
    stale() = true;
}

int DSRegistration::classCount() const {
    int n = 0;
    for (_classStruct* c = classTable_; c && c->className; ++c) ++n;
    return n;
}

const std::vector<DSRegistration*>& DSRegistration::all() { return records(); }

const _classStruct* DSRegistration::findClass(const char* className) {
    const Found* f = lookup(className);
    return f ? f->row : nullptr;
}

DSRegistration* DSRegistration::componentOf(const char* className) {
    const Found* f = lookup(className);
    return f ? f->record : nullptr;
}

ADObject* DSRegistration::create(const char* className, const char* context, const char* objID) {
    DSRegistration* r = componentOf(className);
    if (!r || !r->factory_) return nullptr;
    return r->factory_(className, context, objID);
}
