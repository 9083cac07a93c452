// DSParent.cpp — DSParent's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include "model/links/DSParent.h"

#define KR_CLASS DSParent
#define KR_BASE _KRLink
#define KR_ROWS "model/links/DSParent.def"
#define KR_OWN_OFFSET 2
#define KR_THIS_LINK_DSParent ~, 1
#include "model/framework/RowsDefinitions.inc"

char* _DSParent::writePARENT() { return nullptr; }
