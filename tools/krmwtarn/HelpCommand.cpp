// HelpCommand.cpp — `krmwtarn help [COMMAND]`: the tool's help, or one
// command's, as --help prints it. Added last: it lists every command added
// before it, itself included, under "Commands".
#include "CommandLine.h"
#include "Commands.h"
#include "Files.h"

namespace krmwtarn {

void addHelp(CommandLine& cli) {
    std::string& topic = cli.keep<std::string>();
    CLI::App* help = cli.app.add_subcommand("help", "Describe the tool, or one command");
    // Every command, help included, is listed under "Commands" and can be asked about.
    std::vector<std::string> commandNames;
    for (CLI::App* command : cli.app.get_subcommands([](CLI::App*) { return true; })) {
        command->group("Commands");
        commandNames.push_back(command->get_name());
    }
    positional(help, "COMMAND", topic, "The command to describe")->check(CLI::IsMember(commandNames));
    cli.runs(help, [&app = cli.app, &topic] {
        const CLI::App* described = topic.empty() ? &app : app.get_subcommand(topic);
        std::string prefix = described == &app ? "krmwtarn" : "krmwtarn " + topic;
        printText(app.get_formatter()->make_help(described, prefix, CLI::AppFormatMode::Normal));
        return static_cast<int>(exitDone);
    });
}

}  // namespace krmwtarn
