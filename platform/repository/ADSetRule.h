// ADSetRule.h — the setter rule of every attribute and link end, written once
// for the model's classes and the data dictionary's: a set is skipped when
// keep-changed (2) meets a set change bit or a store (1) would not change the
// value; then the change bit is set on 4 and cleared on 8, and a store or a
// set bit is notified under the row's name.
#pragma once

#include <krmwtarn/platform/repository/ADAttributeEntry.h>
#include <krmwtarn/platform/repository/ADObject.h>

// The tail of every setter: change bit through `mark`, then the notification.
template <class Mark>
void adFinishSet(_ADObject* self, omSetProcessing how, const char* name, Mark mark) {
    if (how & omSetChanged) mark(true);
    if (how & omClearChanged) mark(false);
    if (how & (omStore | omSetChanged)) self->processNotification(name);
}

// The whole rule of an attribute: `changed` is its change bit now, `same`
// answers whether the new value equals the held one, `assign` stores it.
template <class Same, class Assign, class Mark>
void adSetAttribute(_ADObject* self, omSetProcessing how, bool changed, const char* name, Same same, Assign assign,
                    Mark mark) {
    if ((how & omKeepChanged) && changed) return;
    if (how & omStore) {
        if (same()) return;
        assign();
    }
    adFinishSet(self, how, name, mark);
}
