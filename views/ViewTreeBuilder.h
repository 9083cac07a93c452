// ViewTreeBuilder.h — builds a view tree from its outline: each list's chain
// back to front, each nested list before its element, the root list last,
// handed to the view type. A role's nested list takes the link class that the
// class catalogue gives the role on the class of the list it stands in.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/views/ViewRows.h>

class DLLViewList;
class DLLViewType;

// The link class of role `role` on class `className` or a superclass, from the
// attribute tables of the registered components; null when no such role is known.
KRMWTARN_API const char* viewRoleLinkClass(const char* className, const char* role);

// Builds the list of class `className` from the rows [begin, end) whose level is
// `level` (and, below each role or end row, the deeper rows that follow it). A
// failed allocation leaves a null node and building goes on; so does a role that
// the catalogue does not know on the list's class (the element gets no nested list).
KRMWTARN_API DLLViewList* buildViewList(const char* className, const viewrows::Row* rows, std::size_t begin,
                                        std::size_t end, int level);

// Builds the whole tree of `outline` under a root list of `rootClass` and
// attaches it to `view`.
KRMWTARN_API void buildViewTree(DLLViewType* view, const char* rootClass, const viewrows::Outline& outline);
