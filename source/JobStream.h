// JobStream.h — generation decks inside job streams: telling a file of
// job-control cards from a deck, and finding the in-stream data sets (`DD *`,
// `DD DATA`, `DLM=`) whose first statement is a generation statement. Used by
// the statement reader; the job-control cards themselves are never reported.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace krsource {

// Cards [begin, end) of a file, by index.
struct KRMWTARN_API CardRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Whether the cards are a job stream: the first non-blank card is a job-control
// card (`//` in columns 1-2), or a JES control card (`/*` and a letter) with
// job-control cards after it.
KRMWTARN_API bool isJobStream(const std::vector<std::string_view>& cards);

// Every in-stream data set of a job stream, delimiters and job-control cards
// excluded, in file order. Cards that are neither job control nor explicitly
// in-stream data are a data set of their own, as the job entry system reads them.
KRMWTARN_API std::vector<CardRange> inStreamData(const std::vector<std::string_view>& cards);

// Whether `op` (upper case) is a generation statement (DBD ... DBDGEN, PCB ...
// PSBGEN) or one of the directives a deck may open with (PRINT, TITLE, EJECT,
// SPACE).
KRMWTARN_API bool generationOperation(std::string_view op);

// Whether the first statement of the cards (comment and blank cards passed
// over) is a generation statement or one of the deck's directives.
KRMWTARN_API bool opensDeck(const std::vector<std::string_view>& cards, CardRange range);

}  // namespace krsource
