// DeckFuzzCheck.h — one input of the deck fuzzing: the bytes are split into a
// DBD deck and a PSB deck at the first 0xFF byte and loaded; a load that fails
// must leave the repository empty, a load that succeeds must write decks that
// load again. Answers false when a check fails.
#pragma once

#include "source/DeckLoader.h"
#include "source/DeckWriter.h"

#include <string>
#include <string_view>

namespace deckfuzz {

inline bool check(std::string_view bytes) {
    std::size_t cut = bytes.find('\xff');
    std::vector<krsource::Deck> decks = {{"a.dbd", std::string(bytes.substr(0, cut))}};
    if (cut != std::string_view::npos) decks.push_back({"b.psb", std::string(bytes.substr(cut + 1))});
    bool good = true;
    {
        krsource::LoadResult r = krsource::loadDecks(decks);
        if (!r.ok()) {
            good = DSRegistrar::count() == 0;
        } else {
            std::vector<krsource::Deck> written;
            for (const DSDBD& d : r.dbds) written.push_back({"w.dbd", krsource::writeDbdDeck(d.operator->())});
            for (const DSPSB& p : r.psbs) written.push_back({"w.psb", krsource::writePsbDeck(p.operator->())});
            r = krsource::LoadResult();
            DSRegistrar::releaseAll();
            krsource::LoadResult again = krsource::loadDecks(written);
            good = again.ok();
        }
    }
    DSRegistrar::releaseAll();
    return good;
}

}  // namespace deckfuzz
