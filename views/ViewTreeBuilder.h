// ViewTreeBuilder.h — builds a view tree from its flattened outline: each list's
// chain back to front, each nested list before its role element, the root list
// last, handed to the view type.
#pragma once

#include "views/ViewRows.h"

class DLLViewList;
class DLLViewType;

// Builds the list of class `className` from the rows [begin, end) whose level is
// `level` (and, below each role row, the deeper rows that follow it). A failed
// allocation leaves a null node and building goes on.
DLLViewList* buildViewList(const char* className, const viewrows::FlatRow* rows, std::size_t begin,
                           std::size_t end, int level);

// Builds the whole tree of `rows` under a root list of `rootClass` and attaches
// it to `view`.
void buildViewTree(DLLViewType* view, const char* rootClass, const viewrows::FlatRow* rows, std::size_t count);
