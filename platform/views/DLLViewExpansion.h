// DLLViewExpansion.h — what the repository client does with a view: walk its
// tree over a live object graph. An attribute element reads the value through
// the class's attribute table; a role element walks the role and follows the
// links of its nested list's class; an adTarget/adSource element follows the
// far end when its class is exactly the class its list names; a delegating
// element expands the delegated view, unless that view is already being
// expanded on the current path (then only the object's identity is kept).
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/views/DLLView.h>

#include <string>
#include <vector>

struct DLLViewNode;

// A value read through an attribute row: its row type name, null or a text or
// a number ("char" values are kept as a one-character text, 0 as "").
struct KRMWTARN_API DLLViewValue {
    const char* type = nullptr;
    bool isNull = true;
    std::string text;
    long number = 0;
};

// One element's contribution to an object's node.
struct KRMWTARN_API DLLViewEntry {
    enum Kind { Value, Role, End };
    Kind kind = Value;
    const DLLViewElem* element = nullptr;
    DLLViewValue value;              // Value
    std::vector<DLLViewNode> items;  // Role: the link nodes; End: the object at the far end
};

// An object or a link object with the entries its list selected.
struct KRMWTARN_API DLLViewNode {
    _ADObject* object = nullptr;
    const DLLViewList* list = nullptr;       // null where a delegation stopped
    const DLLViewType* delegated = nullptr;  // the view this node was expanded by, if delegated
    std::vector<DLLViewEntry> entries;
};

// Expands `view` over `root`. The root must be a kind of the view's root class;
// otherwise the result has no list and no entries.
KRMWTARN_API DLLViewNode DLLView_expand(DLLViewType* view, _ADObject* root);

// The attribute-table row of `name` on the object's class or its superclasses.
KRMWTARN_API const ADAttributeEntry* DLLView_findRow(_ADObject* object, const char* name);

// Reads a plain attribute through its row.
KRMWTARN_API DLLViewValue DLLView_readValue(_ADObject* object, const ADAttributeEntry& row);

// Counts the nodes of an expansion (objects and links), for reports and tests.
KRMWTARN_API std::size_t DLLView_nodeCount(const DLLViewNode& node);
