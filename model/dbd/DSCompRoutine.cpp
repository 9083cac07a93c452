// DSCompRoutine.cpp — DSCompRoutine expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSCompRoutine.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSCompRoutine
#define KR_ROWS "model/dbd/DSCompRoutine.def"
#include "model/framework/ObjectDefinitions.inc"

