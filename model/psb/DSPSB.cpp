// DSPSB.cpp — DSPSB expanded from its rows, and its operations without behaviour.
#include "model/psb/DSPSB.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSPSB
#define KR_ROWS "model/psb/DSPSB.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSPSB::getName() { return nullptr; }
int _DSPSB::isUsed() { return 0; }
int _DSPSB::validatePSB(char**) { return 0; }
DSmacro& _DSPSB::writePSB() { return DSmacro::empty(); }
char* _DSPSB::writePSBasSource(int, char*) { return nullptr; }
void _DSPSB::renamePCBs(char*) { }
int _DSPSB::setFullName(const char*) { return 0; }
int _DSPSB::setFullName(const char*, char, char) { return 0; }
int _DSPSB::setFullName(const char*, const char*, const char*, const char*) { return 0; }
