// Columns.h — an attribute's value between an object and a statement's column:
// bound from the object for a row written, set on the object from a row read
// (straight from the statement, or from a value kept until a link is made).
#pragma once

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/store/Schema.h>
#include <krmwtarn/store/Sql.h>

#include <string>

namespace krstore {

// A column's value kept past its row.
struct Value {
    bool null = true;
    long long number = 0;
    std::string text;
};

// Written inline: they run once per column of every row, in the store's and
// the retrieve's innermost loops.

// A column's value as its type reads it: text for strings and characters, a
// number for the rest (neither database is asked to convert the other way).
inline Value readValue(Statement& s, int column, ColumnType type) {
    Value v;
    if (s.isNull(column)) return v;
    v.null = false;
    if (adIsTextForm(type)) {
        if (const char* t = s.getText(column)) v.text = t;
    } else {
        v.number = s.getInt(column);
    }
    return v;
}

// Binds an object's attribute to a parameter; a null string and the
// character 0 are bound as null.
inline void bindColumn(Parameters& s, int i, _ADObject* o, const Column& c) {
    adVisitValue(o, *c.row, c.type, [&](auto tr, auto value) {
        using T = decltype(tr);
        if constexpr (T::form == ADValueForm::Text) {
            if (value)
                s.bindText(i, value);
            else
                s.bindNull(i);
        } else if constexpr (T::form == ADValueForm::Char) {
            if (value)
                s.bindText(i, std::string_view(&value, 1));
            else
                s.bindNull(i);
        } else {
            s.bindInt(i, value);
        }
    });
}

// Sets one attribute; `text` is the value's text when it has one.
inline void applyText(_ADObject* o, const Column& c, const Value& v, omSetProcessing how, const char* text) {
    if (!c.row->setter.str) return;
    adAssignValue(o, *c.row, c.type, how, [&](auto tr) { return adFromPlain<decltype(tr)>(v.null, text, v.number); });
}
// Sets one attribute from a kept value; a null value clears a string.
inline void applyValue(_ADObject* o, const Column& c, const Value& v, omSetProcessing how) {
    applyText(o, c, v, how, v.text.c_str());
}

// Sets one attribute straight from the statement's current row, no copy made.
inline void applyColumn(_ADObject* o, const Column& c, Statement& s, int column, omSetProcessing how) {
    Value v;
    v.null = s.isNull(column);
    const char* text = nullptr;
    if (!v.null) {
        if (adIsTextForm(c.type))
            text = s.getText(column);
        else
            v.number = s.getInt(column);
    }
    applyText(o, c, v, how, text);
}

}  // namespace krstore
