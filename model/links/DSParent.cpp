// DSParent.cpp — DSParent's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include <krmwtarn/model/links/DSParent.h>

#define KR_CLASS DSParent
#define KR_ROWS "krmwtarn/model/links/DSParent.def"
#include <krmwtarn/model/framework/LinkDefinitions.inc>

char* _DSParent::writePARENT() { return nullptr; }
