// DSPCBdb.h — a database PCB: key length, positioning, processing sequence and sensitive segments.
// The class's attributes and roles are its rows in DSPCBdb.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/psb/DSPCBbased.h"

#define KR_ROWS "model/psb/DSPCBdb.def"
#define KR_ATTR(n, t)
#define KR_NAME(n)
#define KR_ROLE(n, o, l, i, f) class o; class l;
#include KR_ROWS
#include "model/framework/RowsUndef.inc"

KR_DECLARE_HANDLE(DSPCBdb, DSPCBbased)

class _DSPCBdb : public _DSPCBbased {
#define KR_CLASS DSPCBdb
#define KR_BASE _DSPCBbased
#include "model/framework/ObjectBody.inc"
#undef KR_CLASS
#undef KR_BASE

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getPCBtype() override;
    int validatePCBtype(KVException* messages) override;
    DSmacro& writePCB() override;
    int countSensegs(KVException* messages, unsigned long* sensegs, unsigned long* senflds, unsigned long* levels);
};
#undef KR_ROWS

KR_DEFINE_ARROW(DSPCBdb)
