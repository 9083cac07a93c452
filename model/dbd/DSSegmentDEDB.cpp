// DSSegmentDEDB.cpp — DSSegmentDEDB expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSSegmentDEDB.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSSegmentDEDB
#define KR_ROWS "model/dbd/DSSegmentDEDB.def"
#include "model/framework/ObjectDefinitions.inc"

DSmacro& _DSSegmentDEDB::writeSEGM() { return DSmacro::empty(); }
int _DSSegmentDEDB::validateSEGMdedb(KVException*, unsigned short, char*, unsigned short) { return 0; }
