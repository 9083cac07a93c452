// DSPCBtype.cpp — DSPCBtype expanded from its rows, and its operations without behaviour.
#include "model/psb/DSPCBtype.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSPCBtype
#define KR_ROWS "model/psb/DSPCBtype.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSPCBtype::getName() { return nullptr; }
char* _DSPCBtype::getPCBtype() { return nullptr; }
int _DSPCBtype::validatePCBtype(KVException*) { return 0; }
DSmacro& _DSPCBtype::writePCB() { return DSmacro::empty(); }
