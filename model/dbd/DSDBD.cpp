// DSDBD.cpp — DSDBD expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBD.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBD
#define KR_ROWS "model/dbd/DSDBD.def"
#include "model/framework/ObjectDefinitions.inc"

char* _DSDBD::getName() { return nullptr; }
int _DSDBD::getReconcileableObjects(DSModelCollection**, DSParmList*) { return 0; }
DSSegment& _DSDBD::getRootSegment() {
    static DSSegment none;
    return none;
}
int _DSDBD::isUsed() { return 0; }
DSSegment* _DSDBD::namedSegment(const char*) { return nullptr; }
DSModelCollection* _DSDBD::rerootSegmentTree(DSSegment&) { return nullptr; }
int _DSDBD::validateDBD(char**) { return 0; }
char* _DSDBD::writeDBDasSource(int, char*) { return nullptr; }
int _DSDBD::setFullName(const char*) { return 0; }
int _DSDBD::setFullName(const char*, char, char) { return 0; }
int _DSDBD::setFullName(const char*, const char*, const char*, const char*) { return 0; }
int _DSDBD::isDependent(DSTechnologyObject*) { return 0; }
void _DSDBD::renameAliases() { }
