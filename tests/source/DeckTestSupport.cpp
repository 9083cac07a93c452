// DeckTestSupport.cpp — helpers of the deck tests (see DeckTestSupport.h).
#include "DeckTestSupport.h"

#include <krmwtarn/json/ViewDocument.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

namespace decktest {

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

std::vector<krsource::Deck> handWrittenDecks() {
    std::vector<std::string> paths;
    // The decks of the folder itself, not those of a subfolder.
    for (const auto& e : std::filesystem::directory_iterator(KRMWTARN_DECKS_DIR))
        if (e.is_regular_file()) paths.push_back(e.path().string());
    std::sort(paths.begin(), paths.end());
    std::vector<krsource::Deck> decks;
    for (const std::string& p : paths) decks.push_back({std::filesystem::path(p).filename().string(), readFile(p)});
    return decks;
}

nlohmann::json renumbered(nlohmann::json docs) {
    std::map<std::string, std::string> ids;
    std::function<void(nlohmann::json&)> walk = [&](nlohmann::json& j) {
        if (j.is_object()) {
            for (auto& [key, value] : j.items()) {
                if (key == "@id" && value.is_string() && value.get<std::string>().rfind('#', 0) == 0) {
                    auto [it, fresh] = ids.emplace(value.get<std::string>(), "#" + std::to_string(ids.size() + 1));
                    value = it->second;
                } else {
                    walk(value);
                }
            }
        } else if (j.is_array()) {
            for (auto& v : j) walk(v);
        }
    };
    walk(docs);
    return docs;
}

nlohmann::json documents(const std::vector<DSDBD>& dbds, const std::vector<DSPSB>& psbs) {
    DLLView_init::initAll();
    nlohmann::json docs = nlohmann::json::array();
    for (const DSDBD& d : dbds) docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPOPULATEDBD"), d.impl()));
    for (const DSPSB& p : psbs) docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPSB"), p.impl()));
    return renumbered(docs);
}

std::vector<krsource::Deck> written(const std::vector<DSDBD>& dbds, const std::vector<DSPSB>& psbs) {
    std::vector<krsource::Deck> decks;
    for (const DSDBD& d : dbds)
        decks.push_back({std::string(d->_get_strDBDName()) + ".dbd", krsource::writeDbdDeck(d.operator->())});
    for (const DSPSB& p : psbs)
        decks.push_back({std::string(p->_get_strPSBName()) + ".psb", krsource::writePsbDeck(p.operator->())});
    return decks;
}

std::string report(const krsource::LoadResult& r) {
    std::string s;
    for (const auto& d : r.diagnostics) s += d.text() + "\n";
    return s;
}

}  // namespace decktest
