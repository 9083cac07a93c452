// DSDBDhidam.cpp — DSDBDhidam expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBDhidam.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBDhidam
#define KR_ROWS "model/dbd/DSDBDhidam.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSDBDhidam::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDhidam::writeDBD() { return DSmacro::empty(); }
