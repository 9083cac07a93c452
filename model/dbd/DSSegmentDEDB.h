// DSSegmentDEDB.h — the segment of a DEDB; its handle deliberately has no operator-> of its own.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSSegmentDEDB.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSSegment.h"

KR_DECLARE_HANDLE_NO_ARROW(DSSegmentDEDB)

class _DSSegmentDEDB : public kr::SuperImpl<DSSegmentDEDB> {
#define KR_CLASS DSSegmentDEDB
#define KR_ROWS "model/dbd/DSSegmentDEDB.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    DSmacro& writeSEGM() override;
    int validateSEGMdedb(KVException* messages, unsigned short level, char* dbdName, unsigned short options);
};
