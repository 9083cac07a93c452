// DSSenSegment.cpp — DSSenSegment expanded from its rows, and its operations without behaviour.
#include "model/psb/DSSenSegment.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSSenSegment
#define KR_ROWS "model/psb/DSSenSegment.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSSenSegment::getName() { return nullptr; }
int _DSSenSegment::validateSENSEG(KVException*, int) { return 0; }
DSmacro& _DSSenSegment::writeSENSEG() { return DSmacro::empty(); }
