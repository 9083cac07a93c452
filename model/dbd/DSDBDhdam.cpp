// DSDBDhdam.cpp — DSDBDhdam expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBDhdam.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBDhdam
#define KR_ROWS "model/dbd/DSDBDhdam.def"
#include "model/framework/ObjectDefinitions.inc"

DSmacro& _DSDBDhdam::writeDBD() { return DSmacro::empty(); }
