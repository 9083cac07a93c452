// DSPCBbased.h — a PCB type based on a DBD, with its processing options.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSPCBbased.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/psb/DSPCBtype.h"

KR_DECLARE_HANDLE(DSPCBbased)

class _DSPCBbased : public kr::SuperImpl<DSPCBbased> {
#define KR_CLASS DSPCBbased
#define KR_ROWS "model/psb/DSPCBbased.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getPCBtype() override;
    int validatePCBtype(KVException* messages) override;
    DSmacro& writePCB() override;
};

KR_DEFINE_ARROW(DSPCBbased)
