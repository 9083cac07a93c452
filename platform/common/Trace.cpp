// Trace.cpp — the trace globals and the default standard-error sink.
#include <krmwtarn/platform/common/Trace.h>

#include <cstdio>

int TRACEFLAG = 0;
int TRACELINE = 0;
const char* TRACEFILENAME = nullptr;

namespace {
krtrace::Sink& sink() {
    static krtrace::Sink s;
    return s;
}
bool critical = true;
}  // namespace

int KRGCRIT() { return critical ? 1 : 0; }

void KRGTRACE(const char* message) {
    if (!message) return;
    if (sink()) {
        sink()(message, TRACELINE, TRACEFILENAME);
        return;
    }
    std::fprintf(stderr, "%s(%d): %s", TRACEFILENAME ? TRACEFILENAME : "?", TRACELINE, message);
}

namespace krtrace {
Sink setSink(Sink s) {
    Sink old = std::move(sink());
    sink() = std::move(s);
    return old;
}
void setCritical(bool on) { critical = on; }
}  // namespace krtrace
