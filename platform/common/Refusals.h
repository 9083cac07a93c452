// Refusals.h — what a user reads for a refusal the model throws, and the one
// way to own a thrown KVException*: the sentences stand in Refusals.def, the
// number stays with them for those who look it up or test it.
#pragma once

#include <krmwtarn/platform/common/Export.h>
#include <krmwtarn/platform/common/KVException.h>

#include <memory>
#include <string>

namespace kr {

// The refusal as a sentence with its number in brackets; an exception the
// table has no sentence for reads as its message.
KRMWTARN_API std::string explain(const KVException& e);
// Whether the table has a sentence for the refusal.
KRMWTARN_API bool hasSentence(const KVException& e);
// For a reader: the sentence where the table has one, else the first further
// text (a message its thrower wrote for a reader, as the store's are), else
// the message.
KRMWTARN_API std::string describe(const KVException& e);

// Runs `step`; a KVException* it throws is owned here and handed back (null
// when nothing was thrown), so no catcher deletes one by hand.
template <class Step>
std::unique_ptr<KVException> refusalOf(Step&& step) {
    try {
        step();
    } catch (KVException* e) {
        return std::unique_ptr<KVException>(e);
    }
    return nullptr;
}

}  // namespace kr
