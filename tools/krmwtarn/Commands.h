// Commands.h — the subcommands of the krmwtarn tool, called by main.cpp with
// their parsed arguments, and the tool's exit statuses. A command prints its
// result on standard output and its complaints on standard error.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace krmwtarn {

// 0 done; 1 bad input (unreadable file, refused document, unknown view, class or
// root name, output that could not be written); 2 bad usage (unknown command,
// bad, missing or extra arguments).
enum ExitStatus : int { exitDone = 0, exitBadInput = 1, exitBadUsage = 2 };

// The view commands work on the built-in sample, with DECKS on the definitions
// read from those generation decks, or with REPO (not empty) on every unit
// retrieved from that repository. ROOT defaults to the object the view is
// usually rooted in (the sample's, or the first DBD or PSB).
int expand(const std::string& view, const std::optional<std::string>& root, bool asJson,
           const std::vector<std::string>& decks, const std::string& repo);
// Every DBD and PSB as JSON documents; FILE "-" is standard output.
int exportDefinitions(const std::string& file, const std::vector<std::string>& decks, const std::string& repo);
// FILE "-" is standard input; with asJson the imported repository is printed
// as documents again instead of a count.
int importDocuments(const std::string& file, bool asJson, const std::string& repo = {});
// Checks the definitions of the decks ARGS, or with REPO the repository's (all,
// or the DBDs and PSBs ARGS names), or the sample; exit 1 on any error finding.
int checkDefinitions(const std::vector<std::string>& args, bool asJson, const std::string& repo);
int graph(const std::optional<std::string>& root, const std::vector<std::string>& decks, const std::string& repo);
// DBDs, PSBs and PCBs by name drawn as one picture, FORMAT "dot" or "svg"
// (rendered by Graphviz's dot), into OUT ("-" is standard output).
int diagram(const std::vector<std::string>& names, const std::string& format, const std::string& out,
            const std::vector<std::string>& decks, const std::string& repo);
int views();
int view(const std::string& name);
int classes();
int classChain(const std::string& name);
int links();

}  // namespace krmwtarn
