// Refusal.h — how the store refuses: a KVException of source "krmwtarn_store"
// with one of the StoreError numbers and a message that says what happened.
#pragma once

#include <krmwtarn/platform/common/KVException.h>

#include <string>

namespace krstore {

[[noreturn]] inline void refuse(long number, const std::string& message) {
    throw new KVException("krmwtarn_store", number, message.c_str());
}

}  // namespace krstore
