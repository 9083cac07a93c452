// DSDBDdedb.cpp — DSDBDdedb expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBDdedb.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBDdedb
#define KR_ROWS "model/dbd/DSDBDdedb.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSDBDdedb::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDdedb::writeDBD() { return DSmacro::empty(); }
