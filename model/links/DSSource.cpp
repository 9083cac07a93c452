// DSSource.cpp — DSSource's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include <krmwtarn/model/links/DSSource.h>

#define KR_CLASS DSSource
#define KR_ROWS "krmwtarn/model/links/DSSource.def"
#include <krmwtarn/model/framework/LinkDefinitions.inc>

char* _DSSource::writeSOURCE() { return nullptr; }
