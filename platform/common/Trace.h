// Trace.h — the common library's diagnostic trace. Code that reports a rule
// breach tests TRACEFLAG and KRGCRIT(), records its line and file in TRACELINE
// and TRACEFILENAME and passes the message to KRGTRACE. Messages go to standard
// error unless a caller installs a sink of its own.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <functional>

extern KRMWTARN_API int TRACEFLAG;
extern KRMWTARN_API int TRACELINE;
extern KRMWTARN_API const char* TRACEFILENAME;

// Nonzero when critical-level messages are wanted (the default once tracing is on).
KRMWTARN_API int KRGCRIT();
KRMWTARN_API void KRGTRACE(const char* message);

namespace krtrace {
// Receives each message with the line and file recorded for it.
using Sink = std::function<void(const char* message, int line, const char* file)>;
// Install a sink (an empty one restores standard error); returns the previous one.
KRMWTARN_API Sink setSink(Sink sink);
KRMWTARN_API void setCritical(bool on);
}  // namespace krtrace

// Write a message through the trace facility when tracing is on.
#define KR_TRACE(msg)                 \
    do {                              \
        if (TRACEFLAG && KRGCRIT()) { \
            TRACELINE = __LINE__;     \
            TRACEFILENAME = __FILE__; \
            KRGTRACE(msg);            \
        }                             \
    } while (0)
