// DSXDFLD.cpp — DSXDFLD expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSXDFLD.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSXDFLD
#define KR_ROWS "model/dbd/DSXDFLD.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSXDFLD::validateINDEX(KVException*) { return 0; }
DSmacro& _DSXDFLD::writeLCHILD() { return DSmacro::empty(); }
DSmacro& _DSXDFLD::writeXDFLD() { return DSmacro::empty(); }
