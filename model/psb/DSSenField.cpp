// DSSenField.cpp — DSSenField expanded from its rows, and its operations without behaviour.
#include "model/psb/DSSenField.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSSenField
#define KR_ROWS "model/psb/DSSenField.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSSenField::validateSENFLD(KVException*) { return 0; }
DSmacro& _DSSenField::writeSENFLD() { return DSmacro::empty(); }
