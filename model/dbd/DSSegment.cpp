// DSSegment.cpp — DSSegment expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSSegment.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSSegment
#define KR_ROWS "model/dbd/DSSegment.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSSegment::getName() { return nullptr; }
unsigned long _DSSegment::realLength() { return 0; }
int _DSSegment::validateSEGM(KVException*, unsigned short, char*) { return 0; }
DSmacro& _DSSegment::writeSEGM() { return DSmacro::empty(); }
DSModelCollection* _DSSegment::getNormalFields() { return nullptr; }
DSModelCollection* _DSSegment::getSequenceFields() { return nullptr; }
void _DSSegment::renameAliases() { }
