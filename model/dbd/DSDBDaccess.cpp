// DSDBDaccess.cpp — DSDBDaccess expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSDBDaccess.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSDBDaccess
#define KR_ROWS "krmwtarn/model/dbd/DSDBDaccess.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSDBDaccess::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDaccess::writeDBD() { return DSmacro::empty(); }
