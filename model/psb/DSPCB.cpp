// DSPCB.cpp — DSPCB expanded from its rows, and its operations without behaviour.
#include "model/psb/DSPCB.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSPCB
#define KR_ROWS "model/psb/DSPCB.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSPCB::getName() { return nullptr; }
char* _DSPCB::getPCBtypeString() { return nullptr; }
int _DSPCB::getProcoptFlag() { return 0; }
int _DSPCB::isUsed() { return 0; }
int _DSPCB::validatePCB(char**) { return 0; }
char* _DSPCB::writePCBasSource(int, char*) { return nullptr; }
