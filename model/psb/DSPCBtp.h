// DSPCBtp.h — a terminal (teleprocessing) PCB with its output destinations.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSPCBtp.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/psb/DSPCBtype.h"

KR_DECLARE_HANDLE(DSPCBtp)

class _DSPCBtp : public kr::SuperImpl<DSPCBtp> {
#define KR_CLASS DSPCBtp
#define KR_ROWS "model/psb/DSPCBtp.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getPCBtype() override;
    int validatePCBtype(KVException* messages) override;
    DSmacro& writePCB() override;
};

KR_DEFINE_ARROW(DSPCBtp)
