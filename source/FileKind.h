// FileKind.h — recognising a file given as a deck that is plainly something
// else (UTF-16 text, binary data, a COBOL copybook), so that the reader says so
// once for the file instead of once for every card.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krsource {

// What the bytes look like when they cannot be card text ("UTF-16 text (...)",
// "binary data (...)"), or empty.
std::string bytesLookLike(std::string_view bytes);

// What the decoded cards look like when they are not statements ("a COBOL
// copybook (...)"), or empty.
std::string cardsLookLike(const std::vector<std::string_view>& cards);

}  // namespace krsource
