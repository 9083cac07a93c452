// ObjectClass.h — what an object class header needs: the handle declarations
// (one pointer, typed operator->, below the superclass of classes.def),
// construction by identity, and the row machinery. A class is its row of
// classes.def, its row list (.def) and its behaviour-less operations.
#pragma once

#include "model/framework/Catalogue.h"
#include "model/framework/KRAttributes.h"
#include "platform/repository/ADIdentity.h"
#include "platform/repository/ADLink.h"
#include "platform/techobj/DSmacro.h"

class KVException;

// Handle class C below its superclass's handle, reaching _C through operator->.
#define KR_DECLARE_HANDLE_BODY(C)                                                                   \
public:                                                                                              \
    C() noexcept = default;                                                                          \
    C(const char* context, const char* objID, int instantiate);                                      \
    explicit C(KR_IMPL(C) * impl) noexcept;

#define KR_DECLARE_HANDLE(C)                                                                        \
    class C : public kr::SuperHandle<C> {                                                            \
        KR_DECLARE_HANDLE_BODY(C)                                                                    \
        KR_IMPL(C) * operator->() const noexcept;                                                    \
    };

// A handle that keeps its base's operator-> (DSSegmentDEDB).
#define KR_DECLARE_HANDLE_NO_ARROW(C)                                                               \
    class C : public kr::SuperHandle<C> {                                                            \
        KR_DECLARE_HANDLE_BODY(C)                                                                    \
    };

#define KR_DEFINE_ARROW(C)                                                                           \
    inline KR_IMPL(C) * C::operator->() const noexcept { return static_cast<KR_IMPL(C)*>(impl_); }
