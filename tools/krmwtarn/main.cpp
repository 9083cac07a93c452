// main.cpp — the krmwtarn command-line tool: a table of subcommands over the
// library's catalogues (classes, one class's attribute-table chain, links).
#include "tools/krmwtarn/Commands.h"
#include "tools/krmwtarn/RepoCommands.h"

#include <cstdio>
#include <cstring>
#include <iostream>

namespace {
struct Command {
    const char* name;
    const char* usage;
    int (*run)(int argc, char** argv);
};

const Command commands[] = {
    {"demo", "demo [VIEW [ROOT]]       expand a view over the built-in sample (CORVIADBD over HOSPDBD)", krmwtarnDemo},
    {"expand", "expand VIEW [--root NAME] [--json]   expand any view over the sample", krmwtarnExpand},
    {"export", "export FILE             write the whole sample as JSON documents (- for stdout)", krmwtarnExport},
    {"import", "import FILE             read JSON documents into an empty repository (- for stdin)", krmwtarnImport},
    {"graph", "graph [NAME]            print a sample definition's whole object graph (HOSPDBD)", krmwtarnGraph},
    {"views", "views                   the registered views: root class, lists, elements, depth, delegations", krmwtarnViews},
    {"view", "view NAME               one view's outline", krmwtarnView},
    {"classes", "classes                 the class table: name, superclass, rows", krmwtarnClasses},
    {"class", "class NAME              the attribute-table chain of one class", krmwtarnClass},
    {"links", "links                   the link catalogue: ends, cardinality, order, checks", krmwtarnLinks},
};

void usage(std::FILE* out) {
    std::fprintf(out, "usage: krmwtarn COMMAND [ARGS]\n\ncommands:\n");
    for (const Command& c : commands) std::fprintf(out, "  %s\n", c.usage);
    std::fprintf(out, "  --help                  this text\n");
    std::fprintf(out,
                 "\nwith --repo PATH before the command (an SQLite repository file):\n"
                 "  sample                  store the built-in sample\n"
                 "  list                    the units: class, name, version, revision, lock owner\n"
                 "  delete NAME             remove a unit\n"
                 "  lock NAME               lock a unit for this user\n"
                 "  unlock NAME [--force]   unlock it; --force breaks a lock whose process is gone\n"
                 "  export -                every DBD and PSB retrieved, as JSON documents\n"
                 "  expand VIEW --root NAME a view over a retrieved definition, as JSON\n");
}
}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        usage(stderr);
        return 2;
    }
    if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0 || std::strcmp(argv[1], "help") == 0) {
        usage(stdout);
        return 0;
    }
    if (std::strcmp(argv[1], "--repo") == 0) {
        if (argc < 4) {
            usage(stderr);
            return 2;
        }
        return repocmd::run(argv[2], argc - 3, argv + 3, std::cout, std::cerr);
    }
    for (const Command& c : commands)
        if (std::strcmp(argv[1], c.name) == 0) return c.run(argc - 1, argv + 1);
    std::fprintf(stderr, "krmwtarn: unknown command '%s'\n", argv[1]);
    usage(stderr);
    return 2;
}
