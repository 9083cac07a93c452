// Commands.h — the commands of the krmwtarn tool, each added to the command
// line with its options and its run by its set-up function, which main.cpp
// calls in the order the tool's help lists them; and the tool's exit statuses.
// A command prints its result on standard output and its complaints on
// standard error.
#pragma once

namespace krmwtarn {

// 0 done; 1 bad input (unreadable file, refused document, unknown view, class or
// root name, output that could not be written); 2 bad usage (unknown command,
// bad, missing or extra arguments).
enum ExitStatus : int { exitDone = 0, exitBadInput = 1, exitBadUsage = 2 };

class CommandLine;

// The view commands work on the built-in sample, on the definitions of the
// decks given by --decks, or on every unit of the repository given by --repo.
void addDemo(CommandLine& cli);     // ExpandCommands.cpp
void addExpand(CommandLine& cli);   //
void addExport(CommandLine& cli);   // DocumentCommands.cpp
void addImport(CommandLine& cli);   //
void addGraph(CommandLine& cli);    // GraphCommand.cpp
void addDiagram(CommandLine& cli);  // DiagramCommand.cpp
// Generation decks read, checked and written.
void addLoad(CommandLine& cli);      // DeckCommands.cpp
void addCheck(CommandLine& cli);     // CheckCommand.cpp
void addGenerate(CommandLine& cli);  // DeckCommands.cpp
// The library's own tables: views, classes, links.
void addViews(CommandLine& cli);    // ViewCommands.cpp
void addView(CommandLine& cli);     //
void addClasses(CommandLine& cli);  // CatalogueCommands.cpp
void addClass(CommandLine& cli);    //
void addLinks(CommandLine& cli);    //
// The repository's units (these need --repo).
void addSample(CommandLine& cli);    // RepoCommands.cpp
void addList(CommandLine& cli);      //
void addDelete(CommandLine& cli);    //
void addLock(CommandLine& cli);      //
void addUnlock(CommandLine& cli);    //
void addCopyRepo(CommandLine& cli);  //
// Last: it lists and describes every command added before it.
void addHelp(CommandLine& cli);  // HelpCommand.cpp

}  // namespace krmwtarn
