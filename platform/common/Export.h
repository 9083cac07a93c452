// Export.h — the one macro that makes a declaration part of a library's
// interface. Every library of this project hides its symbols by default; what
// a client may call, derive from or catch is marked KRMWTARN_API.
#pragma once

#define KRMWTARN_API __attribute__((visibility("default")))
