// CatalogueCommands.cpp — the tool's views of the class table, of one class's
// attribute-table chain and of the link catalogue, read through the
// registration record as the repository client reads it.
#include "CommandLine.h"
#include "Commands.h"

#include <krmwtarn/krmwtarn.h>

#include <cstdio>
#include <memory>
#include <string>

namespace krmwtarn {
namespace {
int rowCount(const ADAttributeEntry* t) {
    int n = 0;
    while (t && t[n].name) ++n;
    return n;
}

std::string decodeFlags(std::uint32_t f) {
    if (adRowKindOf(f) == adRowAttribute) return (f & adFlagName) ? "name attribute" : "attribute";
    std::string s;
    switch (adRowKindOf(f)) {
        case adRowRoleAtSource:
            s = "role, at source";
            break;
        case adRowRoleAtTarget:
            s = "role, at target";
            break;
        case adRowLinkSource:
            s = "source end";
            break;
        case adRowLinkTarget:
            s = "target end";
            break;
        default:
            s = "?";
            break;
    }
    if (f & adFlagControlling) s += ", controlling";
    if (f & adFlagOneToOne) s += ", 1:1";
    if (f & adFlagOneToMany) s += ", one-to-many";
    if (f & adFlagManyToOne) s += ", many-to-one";
    if (f & adFlagManyToMany) s += ", m:n";
    if (f & adFlagOrdered) s += ", ordered";
    return s;
}

const char* cardinality(std::uint32_t sourceFlags) {
    if (sourceFlags & adFlagOneToOne) return "1:1";
    if (sourceFlags & adFlagOneToMany) return "1:n";
    if (sourceFlags & adFlagManyToOne) return "n:1";
    return "m:n";
}

std::string checks(const _classStruct& link, int end) {
    const ADAttributeEntry* t = link.attributes;
    std::string s;
    if (t[1 - end].flags & adFlagControlling) s = "controller test";
    if (t[0].flags & adFlagOneToOne) s += s.empty() ? "one-to-one trace" : ", one-to-one trace";
    return s.empty() ? "none" : s;
}

int classes() {
    std::printf("%-20s %-20s %s\n", "class", "superclass", "rows");
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c)
        std::printf("%-20s %-20s %d\n", c->className, c->superclassName, rowCount(c->attributes));
    return exitDone;
}

int classChain(const std::string& name) {
    // Walk the chain of a live object, as the repository client does.
    std::unique_ptr<ADObject> object(ewswtarnFactory(name.c_str(), "", ADObject::defaultObjID()));
    if (!object || object->isEmpty()) {
        std::fprintf(stderr, "krmwtarn class: no class named '%s'\n", name.c_str());
        return exitBadInput;
    }
    _ADObject* impl = object->impl();
    for (ADAttributeEntry* t = impl->nextAttributeTable(nullptr); t; t = impl->nextAttributeTable(t)) {
        const _classStruct* owner = nullptr;
        for (DSRegistration* r : DSRegistration::all())
            for (_classStruct* c = r->classTable(); c && c->className; ++c)
                if (c->attributes == t) owner = c;
        std::printf("%s\n", owner ? owner->className : "(platform base)");
        int bit = 0;
        for (ADAttributeEntry* row = t; row->name; ++row) {
            bool end = adIsEndRow(*row);
            std::string position = end ? "-" : std::to_string(bit / 8) + ":" + std::to_string(1 << (bit % 8));
            if (!end) ++bit;
            std::printf("  %-24s %-22s %-22s %d  0x%05x  %-40s bit %s\n", row->name, row->inverse ? row->inverse : "-",
                        row->type, row->width, row->flags, decodeFlags(row->flags).c_str(), position.c_str());
        }
    }
    DSRegistrar::releaseAll();
    return exitDone;
}

int links() {
    std::printf("%-20s %-20s %-22s %-20s %-22s %-5s %-7s %-12s %-36s %s\n", "link", "source", "source role", "target",
                "target role", "card", "ordered", "controlling", "source setter checks", "target setter checks");
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) {
        if (!c->superclassName || std::string(c->superclassName) != "ADLink") continue;
        const ADAttributeEntry* t = c->attributes;
        const char* controlling = (t[0].flags & adFlagControlling)   ? "source"
                                  : (t[1].flags & adFlagControlling) ? "target"
                                                                     : "none";
        std::printf("%-20s %-20s %-22s %-20s %-22s %-5s %-7s %-12s %-36s %s\n", c->className, t[0].type, t[0].inverse,
                    t[1].type, t[1].inverse, cardinality(t[0].flags), (t[0].flags & adFlagOrdered) ? "yes" : "no",
                    controlling, checks(*c, 0).c_str(), checks(*c, 1).c_str());
    }
    return exitDone;
}
}  // namespace

void addClasses(CommandLine& cli) {
    cli.runs(cli.app.add_subcommand("classes", "Print the class table: name, superclass, rows"), classes);
}

void addClass(CommandLine& cli) {
    std::string& name = cli.keep<std::string>();
    CLI::App* command = cli.app.add_subcommand("class", "Print the attribute-table chain of one class");
    positional(command, "NAME", name, "A class of the class table ('krmwtarn classes' lists them)")->required();
    cli.runs(command, [&name] { return classChain(name); });
}

void addLinks(CommandLine& cli) {
    cli.runs(cli.app.add_subcommand("links", "Print the link catalogue: ends, roles, cardinality, ordering, checks"),
             links);
}
}  // namespace krmwtarn
