// DSDBDmsdb.cpp — DSDBDmsdb expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSDBDmsdb.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSDBDmsdb
#define KR_ROWS "krmwtarn/model/dbd/DSDBDmsdb.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSDBDmsdb::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDmsdb::writeDBD() { return DSmacro::empty(); }
