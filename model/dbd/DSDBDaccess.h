// DSDBDaccess.h — the access method of a DBD, tied to it by DSDefinedByAccess; the base of the five access types.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSDBDaccess.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSDBDaccess)

class _DSDBDaccess : public kr::SuperImpl<DSDBDaccess> {
#define KR_CLASS DSDBDaccess
#define KR_ROWS "model/dbd/DSDBDaccess.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    virtual int validateDBDtype(KVException* messages);
    virtual DSmacro& writeDBD();
};

KR_DEFINE_ARROW(DSDBDaccess)
