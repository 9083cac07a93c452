// DSSenSegment.h — a sensitive segment (SENSEG) of a database PCB, in its own parent/child hierarchy, mapped onto a DBD segment.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSSenSegment.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSSenSegment)

class _DSSenSegment : public kr::SuperImpl<DSSenSegment> {
#define KR_CLASS DSSenSegment
#define KR_ROWS "model/psb/DSSenSegment.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    int validateSENSEG(KVException* messages, int level);
    DSmacro& writeSENSEG();
};

KR_DEFINE_ARROW(DSSenSegment)
