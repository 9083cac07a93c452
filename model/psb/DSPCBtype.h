// DSPCBtype.h — the kind of a PCB, the common part of the PCB type tree.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSPCBtype.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSPCBtype)

class _DSPCBtype : public kr::SuperImpl<DSPCBtype> {
#define KR_CLASS DSPCBtype
#define KR_ROWS "model/psb/DSPCBtype.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    virtual char* getPCBtype();
    virtual int validatePCBtype(KVException* messages);
    virtual DSmacro& writePCB();
};

KR_DEFINE_ARROW(DSPCBtype)
