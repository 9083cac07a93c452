// DSPCBdb.cpp — DSPCBdb expanded from its rows, and its operations without behaviour.
#include "model/psb/DSPCBdb.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSPCBdb
#define KR_ROWS "model/psb/DSPCBdb.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSPCBdb::getPCBtype() { return nullptr; }
int _DSPCBdb::validatePCBtype(KVException*) { return 0; }
DSmacro& _DSPCBdb::writePCB() { return DSmacro::empty(); }
int _DSPCBdb::countSensegs(KVException*, unsigned long*, unsigned long*, unsigned long*) { return 0; }
