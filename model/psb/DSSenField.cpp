// DSSenField.cpp — DSSenField expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/psb/DSSenField.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSSenField
#define KR_ROWS "krmwtarn/model/psb/DSSenField.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSSenField::validateSENFLD(KVException*) { return 0; }
DSmacro& _DSSenField::writeSENFLD() { return DSmacro::empty(); }
