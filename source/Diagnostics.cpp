// Diagnostics.cpp — formatting and collecting located messages.
#include <krmwtarn/source/Diagnostics.h>

namespace krsource {

void Diagnostics::add(const Location& at, Severity severity, std::string message) {
    if (severity == Severity::Error) {
        ++errors_;
        if (errors_ > kMaxErrors) return;
        if (errors_ == kMaxErrors) message += " (too many errors; further errors are not listed)";
    } else if (++warnings_ > kMaxErrors * 10) {
        return;
    }
    list_.push_back({at.file ? *at.file : std::string(), at.line, at.column, severity, std::move(message), {}, {}});
}

}  // namespace krsource
