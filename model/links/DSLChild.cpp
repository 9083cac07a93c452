// DSLChild.cpp — DSLChild's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include "model/links/DSLChild.h"

#define KR_CLASS DSLChild
#define KR_BASE _KRLink
#define KR_ROWS "model/links/DSLChild.def"
#define KR_OWN_OFFSET 2
#define KR_THIS_LINK_DSLChild ~, 1
#include "model/framework/RowsDefinitions.inc"

int _DSLChild::validateStatement(KVException*) { return 0; }
DSmacro& _DSLChild::writeLCHILD() { return DSmacro::empty(); }
char* _DSLChild::writeLPARENT() { return nullptr; }
