// DSDBDhdam.cpp — DSDBDhdam expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSDBDhdam.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSDBDhdam
#define KR_ROWS "krmwtarn/model/dbd/DSDBDhdam.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

DSmacro& _DSDBDhdam::writeDBD() { return DSmacro::empty(); }
