// DSOutputDest.cpp — DSOutputDest expanded from its rows, and its operations without behaviour.
#include "model/psb/DSOutputDest.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSOutputDest
#define KR_ROWS "model/psb/DSOutputDest.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSOutputDest::writeKeyword() { return nullptr; }
