// DSPCBtp.h — a terminal (teleprocessing) PCB with its output destinations.
// The class's attributes and roles are its rows in DSPCBtp.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/psb/DSPCBtype.h"

#define KR_ROWS "model/psb/DSPCBtp.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE(DSPCBtp, DSPCBtype)

class _DSPCBtp : public _DSPCBtype {
#define KR_CLASS DSPCBtp
#define KR_BASE _DSPCBtype
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getPCBtype() override;
    int validatePCBtype(KVException* messages) override;
    DSmacro& writePCB() override;
};

KR_DEFINE_ARROW(DSPCBtp)
