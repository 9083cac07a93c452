// DSOutputDest.cpp — DSOutputDest expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/psb/DSOutputDest.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSOutputDest
#define KR_ROWS "krmwtarn/model/psb/DSOutputDest.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

char* _DSOutputDest::writeKeyword() { return nullptr; }
