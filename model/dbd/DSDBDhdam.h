// DSDBDhdam.h — the HDAM access type; deliberately below DSDBDdedb, so an HDAM access object has the DEDB attributes too and is a kind of DSDBDdedb.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSDBDhdam.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDdedb.h"

KR_DECLARE_HANDLE(DSDBDhdam)

class _DSDBDhdam : public kr::SuperImpl<DSDBDhdam> {
#define KR_CLASS DSDBDhdam
#define KR_ROWS "model/dbd/DSDBDhdam.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    DSmacro& writeDBD() override;
};

KR_DEFINE_ARROW(DSDBDhdam)
