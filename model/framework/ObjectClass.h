// ObjectClass.h — what an object class header needs: the handle declarations
// (one pointer, typed operator->), construction by identity, and the row
// machinery. A class is its row list (.def) plus its behaviour-less operations.
#pragma once

#include "model/framework/KRAttributes.h"
#include "platform/repository/ADIdentity.h"
#include "platform/repository/ADLink.h"
#include "platform/techobj/DSmacro.h"

class KVException;

// Handle class C below BASEHANDLE, reaching _C through operator->.
#define KR_DECLARE_HANDLE_BODY(C, BASEHANDLE)                                                       \
public:                                                                                              \
    C() noexcept = default;                                                                          \
    C(const char* context, const char* objID, int instantiate);                                      \
    explicit C(KR_IMPL(C) * impl) noexcept;

#define KR_DECLARE_HANDLE(C, BASEHANDLE)                                                            \
    class KR_IMPL(C);                                                                                \
    class C : public BASEHANDLE {                                                                    \
        KR_DECLARE_HANDLE_BODY(C, BASEHANDLE)                                                        \
        KR_IMPL(C) * operator->() const noexcept;                                                    \
    };

// A handle that keeps its base's operator-> (DSSegmentDEDB).
#define KR_DECLARE_HANDLE_NO_ARROW(C, BASEHANDLE)                                                   \
    class KR_IMPL(C);                                                                                \
    class C : public BASEHANDLE {                                                                    \
        KR_DECLARE_HANDLE_BODY(C, BASEHANDLE)                                                        \
    };

#define KR_DEFINE_ARROW(C)                                                                           \
    inline KR_IMPL(C) * C::operator->() const noexcept { return static_cast<KR_IMPL(C)*>(impl_); }
