// ExpandCommands.cpp — the main job of the tool: `demo` and `expand` expand a
// view over the built-in sample, the definitions of decks or a repository's
// units, printed as an indented tree or as a JSON document.
#include "CommandLine.h"
#include "Commands.h"
#include "Definitions.h"
#include "Files.h"

#include <krmwtarn/json/ViewDocument.h>
#include <krmwtarn/platform/repository/ADReflection.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace krmwtarn {
namespace {
void printValue(const DLLViewValue& v) {
    const ADValueTypeInfo* type = adFindValueType(v.type);
    ADValueForm form = type ? type->form : ADValueForm::Integer;
    if (v.isNull)
        std::printf("null");
    else if (form == ADValueForm::Text)
        std::printf("\"%s\"", v.text.c_str());
    else if (form == ADValueForm::Char)
        std::printf("'%s'", v.text.c_str());
    else
        std::printf("%ld", v.number);
}

void printNode(const DLLViewNode& node, int depth) {
    for (const DLLViewEntry& e : node.entries) {
        std::printf("%*s%s", depth * 2, "", e.element->alias);
        if (e.kind == DLLViewEntry::Value) {
            std::printf(" = ");
            printValue(e.value);
            std::printf("\n");
            continue;
        }
        std::printf(e.kind == DLLViewEntry::Role ? ":\n" : ": ");
        for (const DLLViewNode& item : e.items) {
            if (e.kind == DLLViewEntry::Role) std::printf("%*s- ", depth * 2 + 2, "");
            std::printf("%s", item.object->whoAmI());
            if (!item.object->isRelationshipObject()) std::printf(" %s", item.object->objID());
            if (item.delegated && e.kind == DLLViewEntry::End) std::printf("  [by %s]", item.delegated->name());
            if (!item.list) std::printf("  (already being expanded)");
            std::printf("\n");
            printNode(item, depth + (e.kind == DLLViewEntry::Role ? 3 : 2));
        }
    }
}

// VIEW over ROOT, by default the object the view is usually rooted in (the
// sample's, or the first DBD or PSB of the decks or the repository).
int expand(const std::string& viewName, const std::optional<std::string>& rootGiven, bool asJson,
           const std::vector<std::string>& decks, const std::string& repo) {
    DLLView_init::initAll();
    DLLViewType* view = DLLViewType::find(viewName.c_str());
    if (!view) {
        std::fprintf(stderr, "krmwtarn: no view named '%s' (see 'krmwtarn views')\n", viewName.c_str());
        return exitBadInput;
    }
    const char* rootName = rootGiven ? rootGiven->c_str() : nullptr;
    Definitions defs(decks, repo);
    if (!defs.ok()) return exitBadInput;
    int status = exitDone;
    DLLViewList* list = view->_get_adViewList();
    _ADObject* root = list ? defs.find(list->className, rootName) : nullptr;
    if (!root) {
        std::fprintf(stderr, "krmwtarn: %s has no %s named '%s'\n", defs.origin(), list ? list->className : "object",
                     rootName ? rootName : "");
        status = exitBadInput;
    } else if (asJson) {
        printText(viewdoc::exportView(view, root).dump(2) + "\n");
    } else {
        DLLViewNode node = DLLView_expand(view, root);
        std::printf("%s over %s %s\n", view->name(), root->whoAmI(), root->objID());
        printNode(node, 1);
    }
    return status;
}
}  // namespace

void addDemo(CommandLine& cli) {
    struct Arguments {
        std::string view = "CORVIADBD", root;
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* demo = cli.app.add_subcommand("demo", "Expand a view over the built-in sample (CORVIADBD over HOSPDBD)");
    positional(demo, "VIEW", a.view, "The view to expand")->capture_default_str();
    positional(demo, "ROOT", a.root, "The sample object to expand it over (default: the view's usual root)");
    cli.takesDecks(demo);
    cli.runs(demo,
             [&cli, &a, demo] { return expand(a.view, ifGiven(demo, "ROOT", a.root), false, cli.decks, cli.repo); });
}

void addExpand(CommandLine& cli) {
    struct Arguments {
        std::string view, root;
        bool json = false;
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* command = cli.app.add_subcommand("expand", "Expand any of the views over the sample");
    positional(command, "VIEW", a.view, "The view to expand")->required();
    command->add_option("--root", a.root, "The sample object to expand it over (default: the view's usual root)")
        ->type_name("NAME");
    command->add_flag("--json", a.json, "Print the expansion as a JSON document");
    cli.takesDecks(command);
    cli.runs(command, [&cli, &a, command] {
        return expand(a.view, ifGiven(command, "--root", a.root), a.json, cli.decks, cli.repo);
    });
}
}  // namespace krmwtarn
