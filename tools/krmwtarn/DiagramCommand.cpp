// DiagramCommand.cpp — `krmwtarn diagram`: DBDs, PSBs and PCBs of the sample,
// the decks or the repository drawn as one Graphviz DOT picture, printed as
// DOT or rendered to SVG by Graphviz's dot, on standard output or into a file.
#include "CommandLine.h"
#include "Commands.h"

#include <krmwtarn/diagram/DotWriter.h>
#include <krmwtarn/diagram/Graphviz.h>
#include "Definitions.h"
#include "Files.h"

#include <cstdio>

namespace krmwtarn {
namespace {
// DBDs, PSBs and PCBs by name drawn as one picture, FORMAT "dot" or "svg"
// (rendered by Graphviz's dot), into OUT ("-" is standard output).
int diagram(const std::vector<std::string>& names, const std::string& format, const std::string& out,
            const std::vector<std::string>& decks, const std::string& repo) {
    Definitions defs(decks, repo);
    if (!defs.ok()) return exitBadInput;
    std::vector<_ADObject*> subjects;
    for (const std::string& name : names) {
        _ADObject* found = nullptr;
        for (const char* cls : {"DSDBD", "DSPSB", "DSPCB"})
            if (!found) found = defs.find(cls, name.c_str());
        if (!found) {
            std::fprintf(stderr, "krmwtarn diagram: %s has no DBD, PSB or PCB named '%s'\n", defs.origin(),
                         name.c_str());
            return exitBadInput;
        }
        subjects.push_back(found);
    }
    std::string text = krdiagram::writeDot(subjects);
    if (format == "svg") {
        krdiagram::Rendering picture = krdiagram::renderWithDot(text, "svg");
        if (picture.outcome == krdiagram::Rendering::dotMissing) {
            std::fprintf(stderr,
                         "krmwtarn diagram: Graphviz's dot was not found on PATH; install graphviz (bash "
                         "scripts/setup.sh) or use --format dot\n");
            return exitBadInput;
        }
        if (picture.outcome != krdiagram::Rendering::rendered) {
            std::fprintf(stderr, "krmwtarn diagram: Graphviz's dot failed: %s\n", picture.reason.c_str());
            return exitBadInput;
        }
        text = std::move(picture.output);
    }
    return writeResult("diagram", out, text);
}
}  // namespace

void addDiagram(CommandLine& cli) {
    struct Arguments {
        std::vector<std::string> names;
        std::string format = "dot", out = "-";
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* command = cli.app.add_subcommand(
        "diagram", "Draw DBDs (segments, indexes, logical relationships) and PSBs (PCBs, sensitivity) as DOT or SVG");
    command->add_option("NAME", a.names, "The DBDs, PSBs and PCBs to draw, in one picture")->type_name("")->required();
    command->add_option("--format", a.format, "dot, or svg as Graphviz's dot renders it")
        ->type_name("dot|svg")
        ->check(CLI::IsMember({"dot", "svg"}).description(""))
        ->capture_default_str();
    command->add_option("--out", a.out, "The file to write, - for standard output")
        ->type_name("FILE")
        ->capture_default_str();
    cli.takesDecks(command);
    cli.runs(command, [&cli, &a] { return diagram(a.names, a.format, a.out, cli.decks, cli.repo); });
}
}  // namespace krmwtarn
