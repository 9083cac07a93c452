// DSExit.cpp — DSExit expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSExit.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSExit
#define KR_ROWS "model/dbd/DSExit.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSExit::validateEXIT(KVException*) { return 0; }
char* _DSExit::writeEXIT() { return nullptr; }
