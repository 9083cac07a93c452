// DSDBDaccess.cpp — DSDBDaccess expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBDaccess.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBDaccess
#define KR_ROWS "model/dbd/DSDBDaccess.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSDBDaccess::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDaccess::writeDBD() { return DSmacro::empty(); }
