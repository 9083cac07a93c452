// DSSenSegment.cpp — DSSenSegment expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/psb/DSSenSegment.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSSenSegment
#define KR_ROWS "krmwtarn/model/psb/DSSenSegment.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

char* _DSSenSegment::getName() { return nullptr; }
int _DSSenSegment::validateSENSEG(KVException*, int) { return 0; }
DSmacro& _DSSenSegment::writeSENSEG() { return DSmacro::empty(); }
