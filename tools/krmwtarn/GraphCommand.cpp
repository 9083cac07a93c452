// GraphCommand.cpp — `krmwtarn graph`: builds the built-in sample and prints the
// object graph of one definition as an indented tree, read generically through
// the attribute tables: attributes with their values, roles with the link
// objects (and their own attributes) and the objects at the far end, never
// walking straight back over the role it came by.
#include "CommandLine.h"
#include "Commands.h"

#include "Definitions.h"

#include <krmwtarn/platform/repository/ADReflection.h>

#include <cstdio>
#include <cstring>
#include <set>
#include <string>

namespace krmwtarn {
namespace {
// A string quoted or "null", a char quoted or "0", a number; "?" for a type
// the list does not know.
std::string valueOf(_ADObject* o, const ADAttributeEntry& row) {
    std::string out = "?";
    adVisitValue(o, row, [&out](auto tr, auto value) {
        using T = decltype(tr);
        if constexpr (T::form == ADValueForm::Text)
            out = value ? std::string("\"") + value + "\"" : "null";
        else if constexpr (T::form == ADValueForm::Char)
            out = value ? std::string("'") + value + "'" : "0";
        else
            out = std::to_string(value);
    });
    return out;
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
        adForEachRow(o, [&](const ADAttributeEntry& row) {
            if (adIsRoleRow(row) && row.getter.role && !(cameBy && std::strcmp(row.name, cameBy) == 0))
                role(o, row, depth + 1);
        });
    }

private:
    void attributes(_ADObject* o, int depth) {
        adForEachRow(o, [&](const ADAttributeEntry& row) {
            if (!adIsAttributeRow(row) || !row.getter.str) return;
            std::string v = valueOf(o, row);
            if (v != "null" && v != "0") std::printf("%*s%s = %s\n", depth * 2, "", row.name, v.c_str());
        });
    }

    void role(_ADObject* o, const ADAttributeEntry& row, int depth) {
        bool atSource = adRoleEnd(row) == adSource;
        for (const ADObject& h : *(o->*row.getter.role)()) {
            auto* link = static_cast<_ADLink*>(h.impl());
            ADObject* far = atSource ? link->getTarget() : link->getSource();
            std::printf("%*s%s -> %s\n", depth * 2, "", row.name, link->whoAmI());
            attributes(link, depth + 2);
            for (ADAttributeEntry* t = link->attributeTable(); t->name; ++t)
                if (adIsRoleRow(*t) && t->getter.role) role(link, *t, depth + 2);
            if (far && !far->isEmpty()) object(far->impl(), depth + 2, atSource ? "target: " : "source: ", row.inverse);
        }
    }

    std::set<_ADObject*> seen_;
};

int graph(const std::optional<std::string>& name, const std::vector<std::string>& decks, const std::string& repo) {
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
}  // namespace

void addGraph(CommandLine& cli) {
    std::string& root = cli.keep<std::string>();
    CLI::App* command = cli.app.add_subcommand("graph", "Print a sample definition's whole object graph");
    positional(command, "NAME", root, "A DBD, PSB or PCB (default: HOSPDBD, or the first DBD of the decks)");
    cli.takesDecks(command);
    cli.runs(command, [&cli, &root, command] { return graph(ifGiven(command, "NAME", root), cli.decks, cli.repo); });
}
}  // namespace krmwtarn
