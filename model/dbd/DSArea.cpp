// DSArea.cpp — DSArea expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSArea.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSArea
#define KR_ROWS "model/dbd/DSArea.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSArea::validateAREA(KVException*, char*) { return 0; }
DSmacro& _DSArea::writeAREA() { return DSmacro::empty(); }
