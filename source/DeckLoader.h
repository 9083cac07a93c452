// DeckLoader.h — reading DBD and PSB generation decks into the model. Every
// deck given is read first; names that point across decks (PSBs to DBDs,
// logical children and parents, index targets, logical sources) are resolved
// after that, in any order of files. A load with any error leaves the
// repository as it was: whatever it made is taken out again.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/source/Diagnostics.h>

#include <krmwtarn/krmwtarn.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace krsource {

// The version the loaded definitions live in unless the caller gives another.
inline constexpr const char* kDeckVersion = "DECKS";

// The largest DBDs and PSBs the generation utilities accept: the deck reader
// refuses more, the checks report definitions made otherwise that exceed them.
inline constexpr std::size_t kMaxSegments = 255;
inline constexpr int kMaxPCBs = 2500, kMaxSensegs = 30000, kMaxSenflds = 10000;

struct KRMWTARN_API Deck {
    std::string name;   // the file name used in messages
    std::string bytes;  // the deck as read
};

// Where a loaded object was made: the deck (an index into LoadResult::files),
// card and column of its statement.
struct KRMWTARN_API Place {
    int file = 0;
    int line = 0;
    int column = 0;
};

struct KRMWTARN_API LoadResult {
    std::vector<Diagnostic> diagnostics;  // in reading order
    std::vector<DSDBD> dbds;              // the loaded definitions, in deck order
    std::vector<DSPSB> psbs;
    std::vector<std::string> files;  // the decks' names, as messages give them
    // Every object the load made with its statement, ordered by object address.
    std::vector<std::pair<const _ADObject*, Place>> places;
    bool ok() const noexcept;  // no error among the diagnostics
    // The statement that made `object`, or nothing for an object the load did
    // not make (one that was there before, or a link).
    const Place* placeOf(const _ADObject* object) const;
};

// Reads the decks into the repository, in `version`. Identities follow the
// definitions' names (a DBD by its name, a segment by DBD and segment name, a
// field by segment, field name and the segment's identity, an exit by the DBD
// or segment that names it and the routine, a compression routine by its
// segment and name, a PCB by PSB and place, a PCB's type, SENSEGs and SENFLDs
// by PSB and the PCB's name), so a definition loaded again in the same version
// is the same object. The DBDs are built in the order of their names, then the
// PSBs in the order of theirs: the files may come in any order. A statement
// that breaks the card rules is told once; what belongs to it or names it is
// not told again.
KRMWTARN_API LoadResult loadDecks(const std::vector<Deck>& decks, const char* version = kDeckVersion);

// Reads the files and loads them; a file that cannot be read is an error.
KRMWTARN_API LoadResult loadDeckFiles(const std::vector<std::string>& paths, const char* version = kDeckVersion);

}  // namespace krsource
