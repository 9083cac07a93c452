// DSTARNDataset.cpp — DSTARNDataset expanded from its rows, and its operations without behaviour.
#include <krmwtarn/model/dbd/DSTARNDataset.h>

#include <krmwtarn/model/links/DSLinks.h>

#define KR_CLASS DSTARNDataset
#define KR_ROWS "krmwtarn/model/dbd/DSTARNDataset.def"
#include <krmwtarn/model/framework/ObjectDefinitions.inc>

int _DSTARNDataset::validateDATASET(KVException*, char*, char*, int) { return 0; }
DSmacro& _DSTARNDataset::writeDATASET() { return DSmacro::empty(); }
