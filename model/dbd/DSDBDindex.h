// DSDBDindex.h — the INDEX access type: an index DBD, as primary or secondary index, shared among index DBDs.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSDBDindex.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDaccess.h"

class DSDBD;
class DSSegmentComplex;

KR_DECLARE_HANDLE(DSDBDindex)

class _DSDBDindex : public kr::SuperImpl<DSDBDindex> {
#define KR_CLASS DSDBDindex
#define KR_ROWS "model/dbd/DSDBDindex.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateDBDtype(KVException* messages) override;
    DSmacro& writeDBD() override;
    char* getFieldName();
    DSDBD& getTargetDBD();
    DSSegmentComplex& getTargetSegment();
    void setTarget(int kind, DSDBD& dbd, DSSegmentComplex segment, char* field);
};

KR_DEFINE_ARROW(DSDBDindex)
