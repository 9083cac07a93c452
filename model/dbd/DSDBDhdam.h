// DSDBDhdam.h — the HDAM access type; deliberately below DSDBDdedb, so an HDAM access object has the DEDB attributes too and is a kind of DSDBDdedb.
// The class's attributes and roles are its rows in DSDBDhdam.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/dbd/DSDBDdedb.h"

#define KR_ROWS "model/dbd/DSDBDhdam.def"
#define KR_ATTR(n, t)
#define KR_NAME(n)
#define KR_ROLE(n, o, l, i, f) class o; class l;
#include KR_ROWS
#include "model/framework/RowsUndef.inc"

KR_DECLARE_HANDLE(DSDBDhdam, DSDBDdedb)

class _DSDBDhdam : public _DSDBDdedb {
#define KR_CLASS DSDBDhdam
#define KR_BASE _DSDBDdedb
#include "model/framework/ObjectBody.inc"
#undef KR_CLASS
#undef KR_BASE

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    DSmacro& writeDBD() override;
};
#undef KR_ROWS

KR_DEFINE_ARROW(DSDBDhdam)
