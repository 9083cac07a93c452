// DSDBDdedb.h — the DEDB access type (data entry database).
// The class's attributes and roles are its rows in DSDBDdedb.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDaccess.h"

#define KR_ROWS "model/dbd/DSDBDdedb.def"
#define KR_ATTR(n, t)
#define KR_NAME(n)
#define KR_ROLE(n, o, l, i, f) class o; class l;
#include KR_ROWS
#include "model/framework/RowsUndef.inc"

KR_DECLARE_HANDLE(DSDBDdedb, DSDBDaccess)

class _DSDBDdedb : public _DSDBDaccess {
#define KR_CLASS DSDBDdedb
#define KR_BASE _DSDBDaccess
#include "model/framework/ObjectBody.inc"
#undef KR_CLASS
#undef KR_BASE

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateDBDtype(KVException* messages) override;
    DSmacro& writeDBD() override;
};
#undef KR_ROWS

KR_DEFINE_ARROW(DSDBDdedb)
