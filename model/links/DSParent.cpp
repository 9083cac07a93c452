// DSParent.cpp — DSParent's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include "model/links/DSParent.h"

#define KR_CLASS DSParent
#define KR_ROWS "model/links/DSParent.def"
#include "model/framework/LinkDefinitions.inc"

char* _DSParent::writePARENT() { return nullptr; }
