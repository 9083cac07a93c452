// CommandLine.cpp — the set-up every command shares (see CommandLine.h).
#include "CommandLine.h"

#include <utility>

namespace krmwtarn {

CommandLine::CommandLine(CLI::App& parser) : app(parser) {
    // The repository: an SQLite file or a postgresql:// URL given by --repo or
    // KRMWTARN_REPO. Without it the tool works in memory on the built-in sample.
    app.add_option("--repo", repo,
                   "The repository to work on: an SQLite file, or a PostgreSQL database as postgresql://... "
                   "(default: in memory)")
        ->envname("KRMWTARN_REPO")
        ->type_name("PATH|URL");
}

void CommandLine::runs(CLI::App* command, std::function<int()> run, std::function<void()> check) {
    command->callback([this, run = std::move(run), check = std::move(check)] {
        if (check) check();
        run_ = run;
    });
}

void CommandLine::runsOnRepository(CLI::App* command, std::function<int()> run) {
    runs(command, std::move(run), [this, name = command->get_name()] {
        if (repo.empty()) throw CLI::RequiredError("--repo PATH|URL (" + name + " works on a repository)");
    });
}

void CommandLine::takesDecks(CLI::App* command) {
    command->add_option("--decks", decks, "Work on the definitions of these generation decks instead of the sample")
        ->type_name("DECK...")
        ->expected(1, -1);
}

CLI::Option* positional(CLI::App* command, const std::string& name, std::string& value, const std::string& help) {
    return command->add_option(name, value, help)->type_name("");
}

std::optional<std::string> ifGiven(const CLI::App* command, const char* option, const std::string& value) {
    return command->count(option) ? std::optional<std::string>(value) : std::nullopt;
}

}  // namespace krmwtarn
