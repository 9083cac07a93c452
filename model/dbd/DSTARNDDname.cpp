// DSTARNDDname.cpp — DSTARNDDname expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSTARNDDname.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSTARNDDname
#define KR_ROWS "model/dbd/DSTARNDDname.def"
#include "model/framework/ObjectDefinitions.inc"

