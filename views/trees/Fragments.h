// Fragments.h — outline fragments that views of both families share: the
// attributes of a DBD's access type and of a PSB. Part of the tree data of
// QueryViews.h and GraphViews.h.
#pragma once

#include "views/ViewRows.h"

namespace viewtrees {
using namespace viewrows;
// clang-format off

// The PSB statement's values, in the order the PSB views list them.
inline constexpr Row psbAttributes[] = {
    attr(0, "writeToOperator"),
    attr(0, "ssaSize"),
    attr(0, "lockMaximum"),
    attr(0, "onlineImageCopy"),
    attr(0, "maximumQxCalls"),
    attr(0, "language"),
    attr(0, "ioErrorOption"),
    attr(0, "ioaSize"),
    attr(0, "hpPSBName"),
    attr(0, "compatibility"),
};

// What every access type has (DSDBDaccess), in the order the access views list it.
inline constexpr Row accessAttributes[] = {
    attr(0, "passwordFlag"),
    attr(0, "osAccess"),
    attr(0, "dliAccess"),
};

// clang-format on
}  // namespace viewtrees
