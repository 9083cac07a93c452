// Diagnostics.cpp — formatting and collecting located messages.
#include <krmwtarn/source/Diagnostics.h>

namespace krsource {

std::string Diagnostic::text() const {
    // A problem with the file as a whole (it cannot be read) has no card.
    std::string at = line > 0 ? file + ":" + std::to_string(line) + ":" + std::to_string(column) : file;
    return at + ": " + (severity == Severity::Error ? "error: " : "warning: ") + message;
}

void Diagnostics::add(const Location& at, Severity severity, std::string message) {
    if (severity == Severity::Error) {
        ++errors_;
        if (errors_ > kMaxErrors) return;
        if (errors_ == kMaxErrors) message += " (too many errors; further errors are not listed)";
    } else if (++warnings_ > kMaxErrors * 10) {
        return;
    }
    list_.push_back({at.file ? *at.file : std::string(), at.line, at.column, severity, std::move(message)});
}

}  // namespace krsource
