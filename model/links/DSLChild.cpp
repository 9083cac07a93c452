// DSLChild.cpp — DSLChild's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include "model/links/DSLChild.h"

#define KR_CLASS DSLChild
#define KR_ROWS "model/links/DSLChild.def"
#include "model/framework/LinkDefinitions.inc"

int _DSLChild::validateStatement(KVException*) { return 0; }
DSmacro& _DSLChild::writeLCHILD() { return DSmacro::empty(); }
char* _DSLChild::writeLPARENT() { return nullptr; }
