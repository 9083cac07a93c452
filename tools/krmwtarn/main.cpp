// main.cpp — the krmwtarn command-line tool: one CLI11 parser for every command
// (arguments, --help of the tool and of each command, --version), the call of
// the chosen command and the check that its output reached standard output.
// Each command is added by its set-up function (Commands.h).
// Exit status: 0 done, 1 bad input, 2 bad usage (see Commands.h).
#include "CommandLine.h"
#include "Commands.h"
#include "Files.h"

#include <cstdio>
#include <exception>
#include <sstream>
#include <string>

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

    krmwtarn::CommandLine cli(app);
    // In the order the tool's help lists them; help last, as it names them all.
    krmwtarn::addDemo(cli);
    krmwtarn::addExpand(cli);
    krmwtarn::addExport(cli);
    krmwtarn::addImport(cli);
    krmwtarn::addGraph(cli);
    krmwtarn::addDiagram(cli);
    krmwtarn::addLoad(cli);
    krmwtarn::addCheck(cli);
    krmwtarn::addGenerate(cli);
    krmwtarn::addViews(cli);
    krmwtarn::addView(cli);
    krmwtarn::addClasses(cli);
    krmwtarn::addClass(cli);
    krmwtarn::addLinks(cli);
    krmwtarn::addSample(cli);
    krmwtarn::addList(cli);
    krmwtarn::addDelete(cli);
    krmwtarn::addLock(cli);
    krmwtarn::addUnlock(cli);
    krmwtarn::addCopyRepo(cli);
    krmwtarn::addHelp(cli);
    app.footer(exitStatus + "\n'krmwtarn COMMAND --help' describes a command.");  // the tool's own help only

    int status;
    try {
        app.parse(argc, argv);
        status = cli.run();
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
