// DSDBDmsdb.cpp — DSDBDmsdb expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBDmsdb.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBDmsdb
#define KR_ROWS "model/dbd/DSDBDmsdb.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSDBDmsdb::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDmsdb::writeDBD() { return DSmacro::empty(); }
