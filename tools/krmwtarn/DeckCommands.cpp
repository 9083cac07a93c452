// DeckCommands.cpp — `load DECK... [--json]` reads generation decks and prints
// a summary per definition (or the documents of `export`), storing them with
// --repo; `generate DECK... --out DIR` and `generate --sample --out DIR` write
// each definition as a deck, DIR/NAME.dbd or DIR/NAME.psb.
#include "CommandLine.h"
#include "Commands.h"
#include "RepoCommands.h"

#include <krmwtarn/json/ViewDocument.h>
#include <krmwtarn/sample/SampleModel.h>
#include <krmwtarn/model/framework/Navigation.h>
#include <krmwtarn/source/DeckLoader.h>
#include <krmwtarn/source/DeckWriter.h>
#include <krmwtarn/store/Repository.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>

namespace krmwtarn {
namespace {

// Generated identities (of links) follow the order in which a load made its
// objects, which follows the order of the files; numbered again in the order
// they appear, the documents of the same definitions are the same whatever the
// order of the files or the repository's earlier history.
void renumber(nlohmann::json& j, std::map<std::string, std::string>& ids) {
    if (j.is_object()) {
        for (auto& [key, value] : j.items()) {
            if (key == "@id" && value.is_string() && value.get<std::string>().rfind('#', 0) == 0) {
                auto [it, fresh] =
                    ids.emplace(value.get<std::string>(), std::string("#").append(std::to_string(ids.size() + 1)));
                value = it->second;
            } else {
                renumber(value, ids);
            }
        }
    } else if (j.is_array()) {
        for (auto& v : j) renumber(v, ids);
    }
}

void printDiagnostics(const krsource::LoadResult& r, std::ostream& err) {
    for (const krsource::Diagnostic& d : r.diagnostics) err << d.text() << "\n";
}

// Levels of a DBD: the longest chain of physical parents, counting the root.
int levels(_DSDBD* dbd) {
    int deepest = 0;
    for (_DSSegment* s : kr::targetsOf<DSContainsSegment>(dbd->_get_segments())) {
        int depth = 1;
        for (_DSSegment* p = s; depth <= 255 && (p = kr::targetsOf<DSParent>(p->_get_physicalParent()).first());)
            ++depth;
        deepest = std::max(deepest, depth);
    }
    return deepest;
}

void summary(const krsource::LoadResult& r, std::ostream& out) {
    for (const DSDBD& d : r.dbds) {
        long fields = 0;
        for (_DSSegment* s : kr::targetsOf<DSContainsSegment>(d->_get_segments())) fields += s->_get_fields()->count();
        DSDBDaccess* a = d->_getFirst_dliAccess();
        const char* access = a ? (*a)->_get_dliAccess() : nullptr;
        out << "DBD " << d->_get_strDBDName() << "  access " << (access ? access : "-") << "  segments "
            << d->_get_segments()->count() << "  fields " << fields << "  levels " << levels(d.operator->()) << "\n";
    }
    for (const DSPSB& p : r.psbs) {
        long sensegs = 0, senflds = 0;
        for (_DSPCB* pcb : kr::targetsOf<DSIncludesPCB>(p->_get_listPCBs())) {
            auto* db = kr::dyn_cast<_DSPCBdb>(kr::targetsOf<DSSpecifiedByType>(pcb->_get_typeOfPCB()).first());
            if (!db) continue;
            for (_DSSenSegment* s : kr::targetsOf<DSHasSensitive>(db->_get_senseg())) {
                ++sensegs;
                senflds += s->_get_senflds()->count();
            }
        }
        out << "PSB " << p->_get_strPSBName() << "  PCBs " << p->_get_listPCBs()->count() << "  SENSEGs " << sensegs
            << "  SENFLDs " << senflds << "\n";
    }
}

bool writeFile(const std::filesystem::path& path, const std::string& text, std::ostream& out, std::ostream& err) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file) {
        err << "krmwtarn generate: cannot write '" << path.string() << "'\n";
        return false;
    }
    out << path.string() << "\n";
    return true;
}

// Loads the decks and prints the summaries or the documents; answers the exit
// status and the loaded definitions' roots.
int loadAndPrint(const std::vector<std::string>& decks, bool json, std::ostream& out, std::ostream& err,
                 std::vector<_ADObject*>& roots) {
    krsource::LoadResult r = krsource::loadDeckFiles(decks);
    printDiagnostics(r, err);
    if (!r.ok()) return 1;
    if (json) {
        // DBDs, then PSBs, each by name.
        DLLView_init::initAll();
        auto byName = [](const auto& a, const auto& b) { return std::strcmp(a->objID(), b->objID()) < 0; };
        std::sort(r.dbds.begin(), r.dbds.end(), byName);
        std::sort(r.psbs.begin(), r.psbs.end(), byName);
        nlohmann::json docs = nlohmann::json::array();
        for (const DSDBD& d : r.dbds)
            docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPOPULATEDBD"), d.impl()));
        for (const DSPSB& p : r.psbs) docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPSB"), p.impl()));
        std::map<std::string, std::string> ids;
        renumber(docs, ids);
        out << nlohmann::json{{"documents", docs}}.dump(2) << "\n";
    } else {
        summary(r, out);
    }
    for (const DSDBD& d : r.dbds) roots.push_back(d.impl());
    for (const DSPSB& p : r.psbs) roots.push_back(p.impl());
    return 0;
}

// Loads the decks and prints a summary per definition (or, with `json`, every
// definition as the documents of `export`); diagnostics go to `err`. Answers
// the exit status: 1 when the load has an error, else 0. With a repository,
// its units are read first (decks may name what is stored) and the loaded
// definitions are stored; a load with an error stores nothing.
int deckLoad(const std::vector<std::string>& decks, bool json, const std::string& repo, std::ostream& out,
             std::ostream& err) {
    if (!repo.empty()) {
        // What is stored first, so that the decks' names resolve against it.
        return repocmd::storeMade(repo, json, out, err, [&](krstore::Repository& r, std::vector<_ADObject*>& roots) {
            r.retrieveAll();
            return loadAndPrint(decks, json, out, err, roots);
        });
    }
    std::vector<_ADObject*> roots;
    int status = loadAndPrint(decks, json, out, err, roots);
    DSRegistrar::releaseAll();
    return status;
}

// Loads the decks (or builds the sample) and writes each definition as
// DIR/NAME.dbd or DIR/NAME.psb, naming each file written on `out`.
int deckGenerate(const std::vector<std::string>& decks, bool useSample, const std::string& outDir, std::ostream& out,
                 std::ostream& err) {
    std::error_code ec;
    std::filesystem::create_directories(outDir, ec);
    if (ec) {
        err << "krmwtarn generate: cannot make the directory '" << outDir << "'\n";
        return 1;
    }
    std::vector<DSDBD> dbds;
    std::vector<DSPSB> psbs;
    int status = 0;
    if (useSample) {
        sample::Model m = sample::build();
        dbds = {m.hospital, m.hospIndex, m.nameIndex, m.logical, m.dedb, m.hdam, m.msdb};
        psbs = {m.psb};
    } else {
        krsource::LoadResult r = krsource::loadDeckFiles(decks);
        printDiagnostics(r, err);
        if (!r.ok()) status = 1;
        dbds = std::move(r.dbds);
        psbs = std::move(r.psbs);
    }
    std::filesystem::path dir(outDir);
    for (const DSDBD& d : dbds)
        if (!writeFile(dir / (std::string(d->_get_strDBDName()) + ".dbd"), krsource::writeDbdDeck(d.operator->()), out,
                       err))
            status = 1;
    for (const DSPSB& p : psbs)
        if (!writeFile(dir / (std::string(p->_get_strPSBName()) + ".psb"), krsource::writePsbDeck(p.operator->()), out,
                       err))
            status = 1;
    dbds.clear();
    psbs.clear();
    DSRegistrar::releaseAll();
    return status;
}
}  // namespace

void addLoad(CommandLine& cli) {
    struct Arguments {
        std::vector<std::string> decks;
        bool json = false;
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* command = cli.app.add_subcommand("load", "Read DBD and PSB generation decks: a summary per definition");
    command->add_option("DECK", a.decks, "The decks to read, in any order")->type_name("")->required();
    command->add_flag("--json", a.json, "Print every definition as the documents export writes instead");
    cli.runs(command, [&cli, &a] { return deckLoad(a.decks, a.json, cli.repo, std::cout, std::cerr); });
}

void addGenerate(CommandLine& cli) {
    struct Arguments {
        std::vector<std::string> decks;
        bool sample = false;
        std::string out;
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* command =
        cli.app.add_subcommand("generate", "Write each definition as a generation deck, DIR/NAME.dbd or DIR/NAME.psb");
    CLI::Option* from = command->add_option("DECK", a.decks, "The decks to read")->type_name("");
    command->add_flag("--sample", a.sample, "Write the built-in sample instead")->excludes(from);
    command->add_option("--out", a.out, "The directory to write into")->type_name("DIR")->required();
    cli.runs(
        command, [&a] { return deckGenerate(a.decks, a.sample, a.out, std::cout, std::cerr); },
        [&a] {
            if (a.decks.empty() && !a.sample) throw CLI::RequiredError("DECK... or --sample");
        });
}
}  // namespace krmwtarn
