// DeckTestSupport.h — helpers of the deck tests: the hand-written decks, loaded
// definitions as export documents (with generated link identities numbered in
// order of appearance, so two loads compare), and writing definitions back.
#pragma once

#include "source/Cards.h"
#include "source/DeckLoader.h"
#include "source/DeckWriter.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace decktest {

std::string readFile(const std::string& path);
// Every deck of tests/source/decks, by file name.
std::vector<krsource::Deck> handWrittenDecks();
// The documents of `export` for the loaded definitions (DBDs by
// CORVIAPOPULATEDBD, PSBs by CORVIAPSB), generated identities renumbered.
nlohmann::json documents(const std::vector<DSDBD>& dbds, const std::vector<DSPSB>& psbs);
nlohmann::json renumbered(nlohmann::json docs);
// Each definition written as a deck, named NAME.dbd / NAME.psb.
std::vector<krsource::Deck> written(const std::vector<DSDBD>& dbds, const std::vector<DSPSB>& psbs);
// All diagnostics as text, one a line.
std::string report(const krsource::LoadResult& r);

}  // namespace decktest
