// DSSegmentComplex.cpp — DSSegmentComplex expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSSegmentComplex.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSSegmentComplex
#define KR_ROWS "model/dbd/DSSegmentComplex.def"
#include "model/framework/ObjectDefinitions.inc"

unsigned long _DSSegmentComplex::realLength() { return 0; }
int _DSSegmentComplex::validateSEGM(KVException*, unsigned short, char*) { return 0; }
DSmacro& _DSSegmentComplex::writeSEGM() { return DSmacro::empty(); }
void _DSSegmentComplex::touchDependentObjects() { }
