// DocumentCommands.cpp — the definitions as JSON documents: `export` writes
// every DBD and PSB of the sample, the decks or a repository; `import` reads
// documents into an empty repository (or stores them in --repo), all of them
// or, when one is refused, nothing.
#include "CommandLine.h"
#include "Commands.h"
#include "Definitions.h"
#include "Files.h"
#include "RepoCommands.h"

#include <krmwtarn/json/ViewDocument.h>
#include <krmwtarn/model/framework/Navigation.h>
#include <krmwtarn/store/Repository.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace krmwtarn {
namespace {
// Every definition as documents: each DBD by the populate view, each PSB by its view.
nlohmann::json documentsOf(const krmwtarn::Definitions& defs) {
    DLLView_init::initAll();
    nlohmann::json docs = nlohmann::json::array();
    for (const ADObject& r : defs.roots())
        docs.push_back(viewdoc::exportView(
            DLLViewType::find(kr::isa<_DSDBD>(r.impl()) ? "CORVIAPOPULATEDBD" : "CORVIAPSB"), r.impl()));
    return nlohmann::json{{"documents", docs}};
}

// The imported roots exported again, each by the view its document names, in
// the shape that was read: one document, or {"documents": [...]}.
nlohmann::json exportAgain(const nlohmann::json& read, const std::vector<ADObject>& roots) {
    auto again = [&](const nlohmann::json& doc, const ADObject& root) {
        return viewdoc::exportView(DLLViewType::find(doc.at("view").get<std::string>().c_str()), root.impl());
    };
    if (!(read.is_object() && read.contains("documents"))) return again(read, roots.front());
    nlohmann::json docs = nlohmann::json::array();
    for (std::size_t i = 0; i < roots.size(); ++i) docs.push_back(again(read["documents"][i], roots[i]));
    return nlohmann::json{{"documents", docs}};
}

int exportDefinitions(const std::string& file, const std::vector<std::string>& decks, const std::string& repo) {
    nlohmann::json docs;
    {
        Definitions defs(decks, repo);
        if (!defs.ok()) return exitBadInput;
        docs = documentsOf(defs);
    }
    return writeResult("export", file, docs.dump(2) + "\n");
}

// FILE "-" is standard input; with asJson the imported repository is printed
// as documents again instead of a count.
int importDocuments(const std::string& file, bool asJson, const std::string& repo) {
    std::string text, reason;
    if (!readFile(file, text, reason)) {
        std::fprintf(stderr, "krmwtarn import: cannot read %s: %s\n", file == "-" ? "standard input" : file.c_str(),
                     reason.c_str());
        return exitBadInput;
    }
    nlohmann::json doc;
    try {
        doc = nlohmann::json::parse(text);
    } catch (const nlohmann::json::parse_error& e) {
        std::fprintf(stderr, "krmwtarn import: not JSON: %s\n", e.what());
        return exitBadInput;
    }
    DLLView_init::initAll();
    // The documents go into an empty registry; with a repository, the units
    // they make are stored (nothing is when a document is refused).
    auto importInto = [&](std::vector<_ADObject*>& made) {
        try {
            std::vector<ADObject> roots = viewdoc::importDocuments(doc);
            if (asJson)
                printText(exportAgain(doc, roots).dump(2) + "\n");
            else
                std::printf("imported %zu document(s): %zu objects and links in the repository\n", roots.size(),
                            DSRegistrar::count());
            for (const ADObject& r : roots) made.push_back(r.impl());
            return static_cast<int>(exitDone);
        } catch (const viewdoc::DocumentError& e) {
            std::fprintf(stderr, "krmwtarn import: %s\n", e.what());
            return static_cast<int>(exitBadInput);
        }
    };
    if (!repo.empty())
        return repocmd::storeMade(
            repo, asJson, std::cout, std::cerr,
            [&](krstore::Repository&, std::vector<_ADObject*>& made) { return importInto(made); });
    std::vector<_ADObject*> made;
    int status = importInto(made);
    DSRegistrar::releaseAll();
    return status;
}
}  // namespace

void addExport(CommandLine& cli) {
    std::string& file = cli.keep<std::string>();
    CLI::App* command = cli.app.add_subcommand("export", "Write the whole sample as JSON documents");
    positional(command, "FILE", file, "The file to write, - for standard output")->required();
    cli.takesDecks(command);
    cli.runs(command, [&cli, &file] { return exportDefinitions(file, cli.decks, cli.repo); });
}

void addImport(CommandLine& cli) {
    struct Arguments {
        std::string file;
        bool json = false;
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* command = cli.app.add_subcommand(
        "import", "Read JSON documents into an empty repository; a refused document changes nothing");
    positional(command, "FILE", a.file, "The file to read, - for standard input")->required();
    command->add_flag("--json", a.json, "Print the imported repository as documents, as export writes them");
    cli.runs(command, [&cli, &a] { return importDocuments(a.file, a.json, cli.repo); });
}
}  // namespace krmwtarn
