// DSPCBtp.cpp — DSPCBtp expanded from its rows, and its operations without behaviour.
#include "model/psb/DSPCBtp.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSPCBtp
#define KR_ROWS "model/psb/DSPCBtp.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSPCBtp::getPCBtype() { return nullptr; }
int _DSPCBtp::validatePCBtype(KVException*) { return 0; }
DSmacro& _DSPCBtp::writePCB() { return DSmacro::empty(); }
