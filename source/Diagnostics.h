// Diagnostics.h — located messages of the deck reader and loader: every
// problem as `file:line:column: error|warning: message`, collected in reading
// order, with a cap so that a deck of garbage cannot flood the caller.
#pragma once

#include <krmwtarn/platform/common/Export.h>
#include <krmwtarn/platform/common/Finding.h>

#include <cstddef>
#include <string>
#include <vector>

namespace krsource {

using kr::Severity;

// A place in a deck: the deck's file name, card number and column (both from 1).
struct KRMWTARN_API Location {
    const std::string* file = nullptr;
    int line = 0;
    int column = 0;
};

// A problem in a deck: its file, card and column, severity and message.
using Diagnostic = kr::Finding;

class KRMWTARN_API Diagnostics {
public:
    // Errors beyond this many are counted but not kept; one last error says so.
    static constexpr std::size_t kMaxErrors = 200;

    void error(const Location& at, std::string message) { add(at, Severity::Error, std::move(message)); }
    void warning(const Location& at, std::string message) { add(at, Severity::Warning, std::move(message)); }
    bool hasErrors() const noexcept { return errors_ > 0; }
    std::size_t errorCount() const noexcept { return errors_; }
    bool full() const noexcept { return errors_ >= kMaxErrors; }
    const std::vector<Diagnostic>& all() const noexcept { return list_; }
    std::vector<Diagnostic> take() { return std::move(list_); }

private:
    void add(const Location& at, Severity severity, std::string message);
    std::vector<Diagnostic> list_;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

}  // namespace krsource
