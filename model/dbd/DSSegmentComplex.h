// DSSegmentComplex.h — the segment of the full-function access types: logical relationships, secondary indexes and a dataset.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSSegmentComplex.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSSegment.h"

KR_DECLARE_HANDLE(DSSegmentComplex)

class _DSSegmentComplex : public kr::SuperImpl<DSSegmentComplex> {
#define KR_CLASS DSSegmentComplex
#define KR_ROWS "model/dbd/DSSegmentComplex.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    unsigned long realLength() override;
    int validateSEGM(KVException* messages, unsigned short level, char* dbdName) override;
    DSmacro& writeSEGM() override;
    void touchDependentObjects();
};

KR_DEFINE_ARROW(DSSegmentComplex)
