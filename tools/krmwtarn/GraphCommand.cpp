// GraphCommand.cpp — `krmwtarn graph`: builds the built-in sample and prints the
// object graph of one definition as an indented tree, read generically through
// the attribute tables: attributes with their values, roles with the link
// objects (and their own attributes) and the objects at the far end, never
// walking straight back over the role it came by.
#include "tools/krmwtarn/Commands.h"

#include "tools/krmwtarn/Definitions.h"

#include <cstdio>
#include <cstring>
#include <set>
#include <string>

namespace {
std::string valueOf(_ADObject* o, const ADAttributeEntry& row) {
    const char* t = row.type;
    if (std::strcmp(t, "string") == 0) {
        char* s = (o->*row.getter.str)();
        return s ? std::string("\"") + s + "\"" : "null";
    }
    if (std::strcmp(t, "boolean") == 0) return std::to_string((o->*row.getter.boolean)());
    if (std::strcmp(t, "short") == 0) return std::to_string((o->*row.getter.shortv)());
    if (std::strcmp(t, "ushort") == 0) return std::to_string((o->*row.getter.ushortv)());
    if (std::strcmp(t, "long") == 0) return std::to_string((o->*row.getter.longv)());
    if (std::strcmp(t, "char") == 0) {
        char c = (o->*row.getter.charv)();
        return c ? std::string("'") + c + "'" : "0";
    }
    return "?";
}

class Printer {
public:
    void object(_ADObject* o, int depth, const char* via, const char* cameBy = nullptr) {
        std::printf("%*s%s%s %s\n", depth * 2, "", via, o->whoAmI(), o->objID());
        if (!seen_.insert(o).second) {
            std::printf("%*s(shown above)\n", depth * 2 + 2, "");
            return;
        }
        attributes(o, depth + 1);
        for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t))
            for (ADAttributeEntry* row = t; row->name; ++row)
                if (adIsRoleRow(*row) && row->getter.role && !(cameBy && std::strcmp(row->name, cameBy) == 0))
                    role(o, *row, depth + 1);
    }

private:
    void attributes(_ADObject* o, int depth) {
        for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t))
            for (ADAttributeEntry* row = t; row->name; ++row) {
                if ((row->flags & 0xF) != adRowAttribute || !row->getter.str) continue;
                std::string v = valueOf(o, *row);
                if (v != "null" && v != "0") std::printf("%*s%s = %s\n", depth * 2, "", row->name, v.c_str());
            }
    }

    void role(_ADObject* o, const ADAttributeEntry& row, int depth) {
        bool atSource = (row.flags & 0xF) == adRowRoleAtSource;
        for (const ADObject& h : *(o->*row.getter.role)()) {
            auto* link = static_cast<_ADLink*>(h.impl());
            ADObject* far = atSource ? link->getTarget() : link->getSource();
            std::printf("%*s%s -> %s\n", depth * 2, "", row.name, link->whoAmI());
            attributes(link, depth + 2);
            for (ADAttributeEntry* t = link->attributeTable(); t->name; ++t)
                if (adIsRoleRow(*t) && t->getter.role) role(link, *t, depth + 2);
            if (far && !far->isEmpty())
                object(far->impl(), depth + 2, atSource ? "target: " : "source: ", row.inverse);
        }
    }

    std::set<_ADObject*> seen_;
};
}  // namespace

int krmwtarn::graph(const std::optional<std::string>& name, const std::vector<std::string>& decks,
                    const std::string& repo) {
    Definitions defs(decks, repo);
    if (!defs.ok()) return exitBadInput;
    const char* root = name ? name->c_str() : nullptr;
    _ADObject* start = nullptr;
    for (const char* cls : {"DSDBD", "DSPSB", "DSPCB"})
        if (!start) start = defs.find(cls, root);
    if (!start) {
        std::fprintf(stderr, "krmwtarn graph: %s has no DBD, PSB or PCB named '%s'\n", defs.origin(), root ? root : "");
        return exitBadInput;
    }
    Printer().object(start, 0, "");
    return exitDone;
}
