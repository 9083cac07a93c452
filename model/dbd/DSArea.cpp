// DSArea.cpp — DSArea expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSArea.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSArea
#define KR_ROWS "krmwtarn/model/dbd/DSArea.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSArea::validateAREA(KVException*, char*) { return 0; }
DSmacro& _DSArea::writeAREA() { return DSmacro::empty(); }
