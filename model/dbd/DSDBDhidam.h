// DSDBDhidam.h — the HIDAM access type: its primary index DBD and root sequence field.
// The class's attributes and roles are its rows in DSDBDhidam.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDaccess.h"

#define KR_ROWS "model/dbd/DSDBDhidam.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE(DSDBDhidam, DSDBDaccess)

class _DSDBDhidam : public _DSDBDaccess {
#define KR_CLASS DSDBDhidam
#define KR_BASE _DSDBDaccess
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateDBDtype(KVException* messages) override;
    DSmacro& writeDBD() override;
};

KR_DEFINE_ARROW(DSDBDhidam)
