// DSDBDindex.h — the INDEX access type: an index DBD, as primary or secondary index, shared among index DBDs.
// The class's attributes and roles are its rows in DSDBDindex.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDaccess.h"

#define KR_ROWS "model/dbd/DSDBDindex.def"
#include "model/framework/ForwardDeclare.inc"

class DSDBD;
class DSSegmentComplex;

KR_DECLARE_HANDLE(DSDBDindex, DSDBDaccess)

class _DSDBDindex : public _DSDBDaccess {
#define KR_CLASS DSDBDindex
#define KR_BASE _DSDBDaccess
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
