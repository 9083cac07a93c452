// DSExit.cpp — DSExit expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSExit.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSExit
#define KR_ROWS "krmwtarn/model/dbd/DSExit.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSExit::validateEXIT(KVException*) { return 0; }
char* _DSExit::writeEXIT() { return nullptr; }
