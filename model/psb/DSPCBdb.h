// DSPCBdb.h — a database PCB: key length, positioning, processing sequence and sensitive segments.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSPCBdb.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/psb/DSPCBbased.h"

KR_DECLARE_HANDLE(DSPCBdb)

class _DSPCBdb : public kr::SuperImpl<DSPCBdb> {
#define KR_CLASS DSPCBdb
#define KR_ROWS "model/psb/DSPCBdb.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getPCBtype() override;
    int validatePCBtype(KVException* messages) override;
    DSmacro& writePCB() override;
    int countSensegs(KVException* messages, unsigned long* sensegs, unsigned long* senflds, unsigned long* levels);
};

KR_DEFINE_ARROW(DSPCBdb)
