// CommandLine.h — what the set-up of every command shares: the tool's CLI11
// parser, the repository it works on (--repo), the decks the view commands may
// work on instead of the sample (--decks), and the run of the command chosen,
// kept until the arguments are parsed. Each command's file adds the command,
// its options and its run through its set-up function (Commands.h).
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace krmwtarn {

class CommandLine {
public:
    explicit CommandLine(CLI::App& app);

    CLI::App& app;
    // --repo PATH|URL or KRMWTARN_REPO; empty: the tool works in memory.
    std::string repo;
    // --decks DECK... of the view commands; empty: the sample.
    std::vector<std::string> decks;

    // Storage for a command's arguments, alive as long as the parser.
    template <class Arguments>
    Arguments& keep() {
        auto kept = std::make_shared<Arguments>();
        kept_.push_back(kept);
        return *kept;
    }
    // What `command` does once the arguments are parsed; `check` (if any)
    // refuses an argument combination as bad usage first, by throwing a
    // CLI::ParseError.
    void runs(CLI::App* command, std::function<int()> run, std::function<void()> check = {});
    // A command that works on a repository: bad usage without --repo.
    void runsOnRepository(CLI::App* command, std::function<int()> run);
    // The option --decks DECK... on a view command.
    void takesDecks(CLI::App* command);
    // The run of the command that was parsed.
    int run() const { return run_(); }

private:
    std::function<int()> run_;
    std::vector<std::shared_ptr<void>> kept_;
};

// A positional argument, named as the help text shows it: "VIEW", not "VIEW TEXT".
CLI::Option* positional(CLI::App* command, const std::string& name, std::string& value, const std::string& help);
// An optional argument's value when it was given.
std::optional<std::string> ifGiven(const CLI::App* command, const char* option, const std::string& value);

}  // namespace krmwtarn
