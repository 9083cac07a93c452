// DSPCBdb.h — a database PCB: key length, positioning, processing sequence and sensitive segments.
// The class's attributes and roles are its rows in DSPCBdb.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/psb/DSPCBbased.h"

#define KR_ROWS "model/psb/DSPCBdb.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE(DSPCBdb, DSPCBbased)

class _DSPCBdb : public _DSPCBbased {
#define KR_CLASS DSPCBdb
#define KR_BASE _DSPCBbased
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getPCBtype() override;
    int validatePCBtype(KVException* messages) override;
    DSmacro& writePCB() override;
    int countSensegs(KVException* messages, unsigned long* sensegs, unsigned long* senflds, unsigned long* levels);
};

KR_DEFINE_ARROW(DSPCBdb)
