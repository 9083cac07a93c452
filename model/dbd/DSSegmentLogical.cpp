// DSSegmentLogical.cpp — DSSegmentLogical expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSSegmentLogical.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSSegmentLogical
#define KR_ROWS "model/dbd/DSSegmentLogical.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSSegmentLogical::getName() { return nullptr; }
int _DSSegmentLogical::validateSEGM(KVException*, unsigned short, char*) { return 0; }
DSmacro& _DSSegmentLogical::writeSEGM() { return DSmacro::empty(); }
