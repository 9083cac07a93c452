// DSDBDhidam.cpp — DSDBDhidam expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSDBDhidam.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSDBDhidam
#define KR_ROWS "krmwtarn/model/dbd/DSDBDhidam.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSDBDhidam::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDhidam::writeDBD() { return DSmacro::empty(); }
