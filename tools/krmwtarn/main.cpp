// main.cpp — the krmwtarn command-line tool: one CLI11 parser for every command
// (arguments, --help of the tool and of each command, --version), the call of
// the chosen command and the check that its output reached standard output.
// Exit status: 0 done, 1 bad input, 2 bad usage (see Commands.h).
#include "Commands.h"
#include "DeckCommands.h"
#include "Files.h"
#include "RepoCommands.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#ifndef KRMWTARN_VERSION
#error "KRMWTARN_VERSION comes from the project version in CMake"
#endif

namespace {
using krmwtarn::exitBadInput;
using krmwtarn::exitBadUsage;
using krmwtarn::exitDone;

// "krmwtarn" and the command that was given, as complaints begin.
std::string commandName(const CLI::App& app) {
    std::string name = "krmwtarn";
    for (const CLI::App* sub : app.get_subcommands()) name += " " + sub->get_name();
    return name;
}

// A complaint about the command line names the command it is about and shows
// that command's help, on standard error.
int refuseUsage(const CLI::App& app, const CLI::ParseError& e, int argc, char** argv) {
    std::string complaint = e.what();
    if (app.get_subcommands().empty()) {
        // Nothing was taken as a command: the first word is not one, or there is none.
        if (argc < 2)
            complaint = "a command is required";
        else if (argv[1][0] == '-')
            complaint = std::string("unknown option '") + argv[1] + "'";
        else
            complaint = std::string("unknown command '") + argv[1] + "'";
    }
    std::fprintf(stderr, "%s: %s\n\n%s", commandName(app).c_str(), complaint.c_str(), app.help().c_str());
    return exitBadUsage;
}

// A positional argument's name as the help text shows it: "VIEW", not "VIEW TEXT".
CLI::Option* positional(CLI::App* command, const std::string& name, std::string& value, const std::string& help) {
    return command->add_option(name, value, help)->type_name("");
}
}  // namespace

int main(int argc, char** argv) {
    CLI::App app{
        "krmwtarn: the information model of the TARN hierarchical database manager's definitions "
        "(DBDs, PSBs and their parts), its views, and the built-in sample they are shown on.",
        "krmwtarn"};
    app.set_version_flag("--version", "krmwtarn " KRMWTARN_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->column_width(34);
    const std::string exitStatus =
        "Exit status: 0 done, 1 bad input (unreadable file, refused document, unknown name), 2 bad usage.";
    app.footer(exitStatus);  // every command takes it over when it is added

    // The repository: an SQLite file or a postgresql:// URL given by --repo or
    // KRMWTARN_REPO. Without it the tool works in memory on the built-in sample.
    std::string repoPath;
    app.add_option("--repo", repoPath,
                   "The repository to work on: an SQLite file, or a PostgreSQL database as postgresql://... "
                   "(default: in memory)")
        ->envname("KRMWTARN_REPO")
        ->type_name("PATH|URL");

    // What the chosen command does, once its arguments are parsed.
    std::function<int()> run;
    auto rootIfGiven = [](const CLI::App* command, const char* option, const std::string& value) {
        return command->count(option) ? std::optional<std::string>(value) : std::nullopt;
    };

    // The view commands work on the sample, or on definitions read from decks.
    std::vector<std::string> decks;
    auto takesDecks = [&](CLI::App* command) {
        command->add_option("--decks", decks, "Work on the definitions of these generation decks instead of the sample")
            ->type_name("DECK...")
            ->expected(1, -1);
    };

    std::string demoView = "CORVIADBD", demoRoot;
    CLI::App* demo = app.add_subcommand("demo", "Expand a view over the built-in sample (CORVIADBD over HOSPDBD)");
    positional(demo, "VIEW", demoView, "The view to expand")->capture_default_str();
    positional(demo, "ROOT", demoRoot, "The sample object to expand it over (default: the view's usual root)");
    takesDecks(demo);
    demo->callback([&] {
        run = [&, root = rootIfGiven(demo, "ROOT", demoRoot)] {
            return krmwtarn::expand(demoView, root, false, decks, repoPath);
        };
    });

    std::string expandView, expandRoot;
    bool expandJson = false;
    CLI::App* expand = app.add_subcommand("expand", "Expand any of the views over the sample");
    positional(expand, "VIEW", expandView, "The view to expand")->required();
    expand->add_option("--root", expandRoot, "The sample object to expand it over (default: the view's usual root)")
        ->type_name("NAME");
    expand->add_flag("--json", expandJson, "Print the expansion as a JSON document");
    takesDecks(expand);
    expand->callback([&] {
        run = [&, root = rootIfGiven(expand, "--root", expandRoot)] {
            return krmwtarn::expand(expandView, root, expandJson, decks, repoPath);
        };
    });

    std::string exportFile;
    CLI::App* exportCommand = app.add_subcommand("export", "Write the whole sample as JSON documents");
    positional(exportCommand, "FILE", exportFile, "The file to write, - for standard output")->required();
    takesDecks(exportCommand);
    exportCommand->callback([&] { run = [&] { return krmwtarn::exportDefinitions(exportFile, decks, repoPath); }; });

    std::string importFile;
    bool importJson = false;
    CLI::App* importCommand = app.add_subcommand(
        "import", "Read JSON documents into an empty repository; a refused document changes nothing");
    positional(importCommand, "FILE", importFile, "The file to read, - for standard input")->required();
    importCommand->add_flag("--json", importJson, "Print the imported repository as documents, as export writes them");
    importCommand->callback([&] { run = [&] { return krmwtarn::importDocuments(importFile, importJson, repoPath); }; });

    std::string graphRoot;
    CLI::App* graph = app.add_subcommand("graph", "Print a sample definition's whole object graph");
    positional(graph, "NAME", graphRoot, "A DBD, PSB or PCB (default: HOSPDBD, or the first DBD of the decks)");
    takesDecks(graph);
    graph->callback([&] {
        run = [&, root = rootIfGiven(graph, "NAME", graphRoot)] { return krmwtarn::graph(root, decks, repoPath); };
    });

    std::vector<std::string> diagramNames;
    std::string diagramFormat = "dot", diagramOut = "-";
    CLI::App* diagram = app.add_subcommand(
        "diagram", "Draw DBDs (segments, indexes, logical relationships) and PSBs (PCBs, sensitivity) as DOT or SVG");
    diagram->add_option("NAME", diagramNames, "The DBDs, PSBs and PCBs to draw, in one picture")
        ->type_name("")
        ->required();
    diagram->add_option("--format", diagramFormat, "dot, or svg as Graphviz's dot renders it")
        ->type_name("dot|svg")
        ->check(CLI::IsMember({"dot", "svg"}).description(""))
        ->capture_default_str();
    diagram->add_option("--out", diagramOut, "The file to write, - for standard output")
        ->type_name("FILE")
        ->capture_default_str();
    takesDecks(diagram);
    diagram->callback(
        [&] { run = [&] { return krmwtarn::diagram(diagramNames, diagramFormat, diagramOut, decks, repoPath); }; });

    std::vector<std::string> loadDecks;
    bool loadJson = false;
    CLI::App* load = app.add_subcommand("load", "Read DBD and PSB generation decks: a summary per definition");
    load->add_option("DECK", loadDecks, "The decks to read, in any order")->type_name("")->required();
    load->add_flag("--json", loadJson, "Print every definition as the documents export writes instead");
    load->callback([&] { run = [&] { return deckLoad(loadDecks, loadJson, repoPath, std::cout, std::cerr); }; });

    std::vector<std::string> checkArgs;
    bool checkJson = false;
    CLI::App* checkCommand = app.add_subcommand(
        "check", "Check definitions against the database manager's rules: decks, a repository (--repo), or the sample");
    checkCommand->add_option("DECK|NAME", checkArgs, "The decks to check; with --repo, the DBDs and PSBs to check")
        ->type_name("");
    checkCommand->add_flag("--json", checkJson, "Print the findings as a JSON document");
    checkCommand->footer(
        "Findings: FILE:LINE:COLUMN: error|warning: [CODE] message (the object's path where there is no deck).\n"
        "Exit status: 0 no errors, 1 an error found or bad input, 2 bad usage.");
    checkCommand->callback([&] { run = [&] { return krmwtarn::checkDefinitions(checkArgs, checkJson, repoPath); }; });

    std::vector<std::string> generateDecks;
    bool generateSample = false;
    std::string generateOut;
    CLI::App* generate =
        app.add_subcommand("generate", "Write each definition as a generation deck, DIR/NAME.dbd or DIR/NAME.psb");
    CLI::Option* generateFrom = generate->add_option("DECK", generateDecks, "The decks to read")->type_name("");
    generate->add_flag("--sample", generateSample, "Write the built-in sample instead")->excludes(generateFrom);
    generate->add_option("--out", generateOut, "The directory to write into")->type_name("DIR")->required();
    generate->callback([&] {
        if (generateDecks.empty() && !generateSample) throw CLI::RequiredError("DECK... or --sample");
        run = [&] { return deckGenerate(generateDecks, generateSample, generateOut, std::cout, std::cerr); };
    });

    CLI::App* views =
        app.add_subcommand("views", "List the registered views: root class, lists, elements, depth, delegations");
    views->callback([&] { run = krmwtarn::views; });

    std::string viewName;
    CLI::App* viewCommand = app.add_subcommand("view", "Print one view's outline");
    positional(viewCommand, "NAME", viewName, "A registered view ('krmwtarn views' lists them)")->required();
    viewCommand->callback([&] { run = [&] { return krmwtarn::view(viewName); }; });

    CLI::App* classes = app.add_subcommand("classes", "Print the class table: name, superclass, rows");
    classes->callback([&] { run = krmwtarn::classes; });

    std::string className;
    CLI::App* classCommand = app.add_subcommand("class", "Print the attribute-table chain of one class");
    positional(classCommand, "NAME", className, "A class of the class table ('krmwtarn classes' lists them)")
        ->required();
    classCommand->callback([&] { run = [&] { return krmwtarn::classChain(className); }; });

    CLI::App* links =
        app.add_subcommand("links", "Print the link catalogue: ends, roles, cardinality, ordering, checks");
    links->callback([&] { run = krmwtarn::links; });

    auto needRepo = [&](const char* what) {
        if (repoPath.empty())
            throw CLI::RequiredError(std::string("--repo PATH|URL (") + what + " works on a repository)");
    };
    CLI::App* storeSample = app.add_subcommand("sample", "Store the built-in sample in the repository");
    storeSample->callback([&] {
        needRepo("sample");
        run = [&] { return repocmd::storeSample(repoPath, std::cout, std::cerr); };
    });
    CLI::App* list =
        app.add_subcommand("list", "List the repository's units: class, name, version, revision, lock owner");
    list->callback([&] {
        needRepo("list");
        run = [&] { return repocmd::list(repoPath, std::cout, std::cerr); };
    });
    std::string unitName;
    bool forceUnlock = false;
    CLI::App* deleteUnit = app.add_subcommand("delete", "Remove a unit from the repository");
    positional(deleteUnit, "NAME", unitName, "The unit's name or ID")->required();
    deleteUnit->callback([&] {
        needRepo("delete");
        run = [&] { return repocmd::remove(repoPath, unitName, std::cout, std::cerr); };
    });
    CLI::App* lockUnit =
        app.add_subcommand("lock", "Lock a unit of the repository for this user (on a server: while the command runs)");
    positional(lockUnit, "NAME", unitName, "The unit's name or ID")->required();
    lockUnit->callback([&] {
        needRepo("lock");
        run = [&] { return repocmd::lock(repoPath, unitName, std::cout, std::cerr); };
    });
    CLI::App* unlockUnit = app.add_subcommand("unlock", "Unlock a unit of the repository");
    positional(unlockUnit, "NAME", unitName, "The unit's name or ID")->required();
    unlockUnit->add_flag("--force", forceUnlock, "Break a lock whose process is gone");
    unlockUnit->callback([&] {
        needRepo("unlock");
        run = [&] { return repocmd::unlock(repoPath, unitName, forceUnlock, std::cout, std::cerr); };
    });

    std::string copyTarget;
    CLI::App* copyRepo =
        app.add_subcommand("copy-repo", "Copy every unit of the repository into another, empty one (file or server)");
    positional(copyRepo, "TARGET", copyTarget, "The repository to copy into: an SQLite file or a postgresql:// URL")
        ->required();
    copyRepo->callback([&] {
        needRepo("copy-repo");
        run = [&] { return repocmd::copyRepository(repoPath, copyTarget, std::cout, std::cerr); };
    });

    std::string helpTopic;
    CLI::App* help = app.add_subcommand("help", "Describe the tool, or one command");
    // Every command, help included, is listed under "Commands" and can be asked about.
    std::vector<std::string> commandNames;
    for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
        command->group("Commands");
        commandNames.push_back(command->get_name());
    }
    positional(help, "COMMAND", helpTopic, "The command to describe")->check(CLI::IsMember(commandNames));
    help->callback([&] {
        run = [&] {
            const CLI::App* topic = helpTopic.empty() ? &app : app.get_subcommand(helpTopic);
            std::string prefix = topic == &app ? "krmwtarn" : "krmwtarn " + helpTopic;
            krmwtarn::printText(app.get_formatter()->make_help(topic, prefix, CLI::AppFormatMode::Normal));
            return exitDone;
        };
    });
    app.footer(exitStatus + "\n'krmwtarn COMMAND --help' describes a command.");  // the tool's own help only

    int status;
    try {
        app.parse(argc, argv);
        status = run();
    } catch (const CLI::ParseError& e) {
        // --help and --version answer 0 on standard output; anything else is bad usage.
        if (e.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) return refuseUsage(app, e, argc, argv);
        std::ostringstream text;
        status = app.exit(e, text);
        krmwtarn::printText(text.str());
    } catch (const std::exception& e) {
        // Whatever a command did not foresee still ends with a message, not an abort.
        std::fprintf(stderr, "%s: %s\n", commandName(app).c_str(), e.what());
        status = exitBadInput;
    }
    std::string reason;
    if (!krmwtarn::flushStandardOutput(reason)) {
        std::fprintf(stderr, "%s: cannot write standard output: %s\n", commandName(app).c_str(), reason.c_str());
        if (status == exitDone) status = exitBadInput;
    }
    return status;
}
