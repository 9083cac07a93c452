// DSTARNDataset.cpp — DSTARNDataset expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSTARNDataset.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSTARNDataset
#define KR_ROWS "model/dbd/DSTARNDataset.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSTARNDataset::validateDATASET(KVException*, char*, char*, int) { return 0; }
DSmacro& _DSTARNDataset::writeDATASET() { return DSmacro::empty(); }
