// ViewOutline.h — reading a built view tree as a client does: its shape
// (lists, elements, depth, delegating elements) and its outline in the form of
// the view catalogue (element, "as" alias, arrow and nested class, delegations
// with the view that expands them).
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <string>

class DLLViewList;

struct KRMWTARN_API ViewShape {
    int lists = 0;
    int elements = 0;
    int depth = 0;       // list levels on the longest path; the root list is level 1
    int delegating = 0;  // elements with flag 1
};

// Over the tree itself; delegations are counted, not followed.
KRMWTARN_API ViewShape measureView(const DLLViewList* root);

// One line per element, in list order, indented two spaces per level:
//   "- segments → DSContainsSegment", "- adName as rootDBDname",
//   "- adTarget, flag 1, expanded by view CORVIAPCB".
KRMWTARN_API std::string viewOutline(const DLLViewList* root);
