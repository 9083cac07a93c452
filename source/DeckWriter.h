// DeckWriter.h — writing DBDs and PSBs of the model as generation decks: one
// deck per definition, 80-column cards (label in column 1, operation in column
// 10, operands from column 16, a continuation mark in column 72 and continued
// text from column 16, nothing beyond column 71), operands in one canonical
// order with the model's unset values left out. The deck loader reads a
// written deck back to the same model.
#pragma once

#include <krmwtarn/krmwtarn.h>

#include <string>
#include <vector>

namespace krsource {

std::string writeDbdDeck(_DSDBD* dbd);
std::string writePsbDeck(_DSPSB* psb);

// The card images of one statement (each without a line end).
std::vector<std::string> formatStatement(const std::string& label, const std::string& operation,
                                         const std::vector<std::string>& operands);

}  // namespace krsource
