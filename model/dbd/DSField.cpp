// DSField.cpp — DSField expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSField.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSField
#define KR_ROWS "model/dbd/DSField.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSField::getName() { return nullptr; }
int _DSField::validateFIELD(KVException*, char*) { return 0; }
DSmacro& _DSField::writeFIELD() { return DSmacro::empty(); }
