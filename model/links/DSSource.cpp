// DSSource.cpp — DSSource's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include "model/links/DSSource.h"

#define KR_CLASS DSSource
#define KR_BASE _KRLink
#define KR_ROWS "model/links/DSSource.def"
#define KR_OWN_OFFSET 2
#define KR_THIS_LINK_DSSource ~, 1
#include "model/framework/RowsDefinitions.inc"

char* _DSSource::writeSOURCE() { return nullptr; }
