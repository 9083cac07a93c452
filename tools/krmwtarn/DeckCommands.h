// DeckCommands.h — the tool's commands over generation decks, taking arguments
// already parsed: `load DECK... [--json]`, `generate DECK... --out DIR`,
// `generate --sample --out DIR`, and loading decks for the commands that work
// over loaded definitions instead of the sample (`--decks DECK...`).
#pragma once

#include <krmwtarn/krmwtarn.h>

#include <ostream>
#include <string>
#include <vector>

// Loads the decks and prints a summary per definition (or, with `json`, every
// definition as the documents of `export`); diagnostics go to `err`. Answers
// the exit status: 1 when the load has an error, else 0. With a repository,
// its units are read first (decks may name what is stored) and the loaded
// definitions are stored; a load with an error stores nothing.
int deckLoad(const std::vector<std::string>& decks, bool json, const std::string& repo, std::ostream& out,
             std::ostream& err);

// Loads the decks (or builds the sample) and writes each definition as
// DIR/NAME.dbd or DIR/NAME.psb, naming each file written on `out`.
int deckGenerate(const std::vector<std::string>& decks, bool sample, const std::string& outDir, std::ostream& out,
                 std::ostream& err);
