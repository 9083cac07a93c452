// DSSource.cpp — DSSource's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include "model/links/DSSource.h"

#define KR_CLASS DSSource
#define KR_ROWS "model/links/DSSource.def"
#include "model/framework/LinkDefinitions.inc"

char* _DSSource::writeSOURCE() { return nullptr; }
