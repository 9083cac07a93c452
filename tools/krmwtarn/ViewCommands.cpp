// ViewCommands.cpp — `views` and `view`: the library's 38 views
// in registration order with their root class and shape, and the outline of any
// registered view (this library's or a data-dictionary view it delegates to).
#include "CommandLine.h"
#include "Commands.h"
#include "Files.h"

#include <krmwtarn/platform/views/DLLView.h>
#include <krmwtarn/views/EwswtarnViews.h>
#include <krmwtarn/views/ViewOutline.h>

#include <cstdio>
#include <string>

namespace krmwtarn {
namespace {

int views() {
    DLLView_init::initAll();
    std::printf("%-3s %-20s %-21s %6s %9s %6s %11s\n", "no.", "view", "root class", "lists", "elements", "depth",
                "delegating");
    for (int i = 0; i < ewswtarnViewCount; ++i) {
        const EwswtarnView& v = ewswtarnViews[i];
        DLLViewType* type = *v.variable;
        const DLLViewList* root = type ? type->_get_adViewList() : nullptr;
        const ViewShape shape = measureView(root);
        std::printf("%-3d %-20s %-21s %6d %9d %6d %11d\n", i + 1, v.name, root ? root->className : "(none)",
                    shape.lists, shape.elements, shape.depth, shape.delegating);
    }
    return exitDone;
}

int view(const std::string& name) {
    DLLView_init::initAll();
    const char* viewName = name.c_str();
    DLLViewType* type = DLLViewType::find(viewName);
    if (!type) {
        std::fprintf(stderr, "krmwtarn view: no view named '%s' ('krmwtarn views' lists them)\n", viewName);
        return exitBadInput;
    }
    const DLLViewList* root = type->_get_adViewList();
    if (!root) {
        std::fprintf(stderr, "krmwtarn view: view '%s' has no tree\n", viewName);
        return exitBadInput;
    }
    const ViewShape shape = measureView(root);
    std::printf("%s (root %s; %d lists, %d elements, depth %d, %d delegating)\n\n", type->name(), root->className,
                shape.lists, shape.elements, shape.depth, shape.delegating);
    printText(viewOutline(root));
    return exitDone;
}
}  // namespace

void addViews(CommandLine& cli) {
    CLI::App* command =
        cli.app.add_subcommand("views", "List the registered views: root class, lists, elements, depth, delegations");
    cli.runs(command, views);
}

void addView(CommandLine& cli) {
    std::string& name = cli.keep<std::string>();
    CLI::App* command = cli.app.add_subcommand("view", "Print one view's outline");
    positional(command, "NAME", name, "A registered view ('krmwtarn views' lists them)")->required();
    cli.runs(command, [&name] { return view(name); });
}
}  // namespace krmwtarn
