// DSSegmentLogical.h — a segment of a logical database, built from ordered source segments.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSSegmentLogical.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSSegment.h"

KR_DECLARE_HANDLE(DSSegmentLogical)

class _DSSegmentLogical : public kr::SuperImpl<DSSegmentLogical> {
#define KR_CLASS DSSegmentLogical
#define KR_ROWS "model/dbd/DSSegmentLogical.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName() override;
    int validateSEGM(KVException* messages, unsigned short level, char* dbdName) override;
    DSmacro& writeSEGM() override;
};

KR_DEFINE_ARROW(DSSegmentLogical)
