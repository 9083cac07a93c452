// DSDBDdedb.h — the DEDB access type (data entry database).
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSDBDdedb.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDaccess.h"

KR_DECLARE_HANDLE(DSDBDdedb)

class _DSDBDdedb : public kr::SuperImpl<DSDBDdedb> {
#define KR_CLASS DSDBDdedb
#define KR_ROWS "model/dbd/DSDBDdedb.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateDBDtype(KVException* messages) override;
    DSmacro& writeDBD() override;
};

KR_DEFINE_ARROW(DSDBDdedb)
