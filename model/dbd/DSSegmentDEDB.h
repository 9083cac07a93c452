// DSSegmentDEDB.h — the segment of a DEDB; its handle deliberately has no operator-> of its own.
// The class's attributes and roles are its rows in DSSegmentDEDB.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSSegment.h"

#define KR_ROWS "model/dbd/DSSegmentDEDB.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE_NO_ARROW(DSSegmentDEDB, DSSegment)

class _DSSegmentDEDB : public _DSSegment {
#define KR_CLASS DSSegmentDEDB
#define KR_BASE _DSSegment
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    DSmacro& writeSEGM() override;
    int validateSEGMdedb(KVException* messages, unsigned short level, char* dbdName, unsigned short options);
};
