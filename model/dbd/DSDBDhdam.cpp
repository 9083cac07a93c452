// DSDBDhdam.cpp — DSDBDhdam expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBDhdam.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBDhdam
#define KR_BASE _DSDBDdedb
#define KR_HANDLE_BASE DSDBDdedb
#define KR_ROWS "model/dbd/DSDBDhdam.def"
#include "model/framework/ObjectDefinitions.inc"

DSmacro& _DSDBDhdam::writeDBD() { return DSmacro::empty(); }
