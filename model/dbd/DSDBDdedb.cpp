// DSDBDdedb.cpp — DSDBDdedb expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSDBDdedb.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSDBDdedb
#define KR_ROWS "krmwtarn/model/dbd/DSDBDdedb.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSDBDdedb::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDdedb::writeDBD() { return DSmacro::empty(); }
