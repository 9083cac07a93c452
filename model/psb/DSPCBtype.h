// DSPCBtype.h — the kind of a PCB, the common part of the PCB type tree.
// The class's attributes and roles are its rows in DSPCBtype.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

#define KR_ROWS "model/psb/DSPCBtype.def"
#define KR_ATTR(n, t)
#define KR_NAME(n)
#define KR_ROLE(n, o, l, i, f) class o; class l;
#include KR_ROWS
#include "model/framework/RowsUndef.inc"

KR_DECLARE_HANDLE(DSPCBtype, ADObject)

class _DSPCBtype : public _ADObject {
#define KR_CLASS DSPCBtype
#define KR_BASE _ADObject
#include "model/framework/ObjectBody.inc"
#undef KR_CLASS
#undef KR_BASE

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    virtual char* getPCBtype();
    virtual int validatePCBtype(KVException* messages);
    virtual DSmacro& writePCB();
};
#undef KR_ROWS

KR_DEFINE_ARROW(DSPCBtype)
