// DSDBDmsdb.h — the MSDB access type (main storage database).
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSDBDmsdb.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDaccess.h"

KR_DECLARE_HANDLE(DSDBDmsdb)

class _DSDBDmsdb : public kr::SuperImpl<DSDBDmsdb> {
#define KR_CLASS DSDBDmsdb
#define KR_ROWS "model/dbd/DSDBDmsdb.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateDBDtype(KVException* messages) override;
    DSmacro& writeDBD() override;
};

KR_DEFINE_ARROW(DSDBDmsdb)
