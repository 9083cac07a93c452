// DSCompRoutine.cpp — DSCompRoutine expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSCompRoutine.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSCompRoutine
#define KR_ROWS "krmwtarn/model/dbd/DSCompRoutine.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>
