// DSDSColl.cpp — DSDSColl's attribute table and accessors, expanded from its rows, and its
// operations without behaviour.
#include "model/links/DSDSColl.h"

#define KR_CLASS DSDSColl
#define KR_ROWS "model/links/DSDSColl.def"
#include "model/framework/LinkDefinitions.inc"

unsigned short _DSDSColl::getSize() { return 0; }
int _DSDSColl::invalidDDName(char*) { return 0; }
unsigned long _DSDSColl::maximumBlock(char*) { return 0; }
unsigned long _DSDSColl::maximumTrack() { return 0; }
int _DSDSColl::validateDATASET(KVException*, char*, int) { return 0; }
