// DSTARNDDname.cpp — DSTARNDDname expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSTARNDDname.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSTARNDDname
#define KR_ROWS "krmwtarn/model/dbd/DSTARNDDname.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>
