// DSDBDindex.cpp — DSDBDindex expanded from its rows, and its operations without behaviour.
#include "model/dbd/DSDBDindex.h"

#include "model/links/DSLinks.h"

#define KR_CLASS DSDBDindex
#define KR_ROWS "model/dbd/DSDBDindex.def"
#include "model/framework/ObjectDefinitions.inc"

int _DSDBDindex::validateDBDtype(KVException*) { return 0; }
DSmacro& _DSDBDindex::writeDBD() { return DSmacro::empty(); }
char* _DSDBDindex::getFieldName() { return nullptr; }
DSDBD& _DSDBDindex::getTargetDBD() {
    static DSDBD none;
    return none;
}
DSSegmentComplex& _DSDBDindex::getTargetSegment() {
    static DSSegmentComplex none;
    return none;
}
void _DSDBDindex::setTarget(int, DSDBD&, DSSegmentComplex, char*) { }
