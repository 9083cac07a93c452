// DSPCBbased.cpp — DSPCBbased expanded from its rows, and its operations without behaviour.
#include "model/psb/DSPCBbased.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSPCBbased
#define KR_ROWS "model/psb/DSPCBbased.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSPCBbased::getPCBtype() { return nullptr; }
int _DSPCBbased::validatePCBtype(KVException*) { return 0; }
DSmacro& _DSPCBbased::writePCB() { return DSmacro::empty(); }
