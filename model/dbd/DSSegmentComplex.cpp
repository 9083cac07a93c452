// DSSegmentComplex.cpp — DSSegmentComplex expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSSegmentComplex.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSSegmentComplex
#define KR_ROWS "krmwtarn/model/dbd/DSSegmentComplex.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

unsigned long _DSSegmentComplex::realLength() { return 0; }
int _DSSegmentComplex::validateSEGM(KVException*, unsigned short, char*) { return 0; }
DSmacro& _DSSegmentComplex::writeSEGM() { return DSmacro::empty(); }
void _DSSegmentComplex::touchDependentObjects() {}
