// Graphviz.h — a DOT text rendered by Graphviz's `dot` program, found on PATH
// and run without a shell: the text goes to its standard input, the picture
// comes from its standard output, its complaints from its standard error.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <string>

namespace krdiagram {

struct Rendering {
    enum Outcome { rendered, dotMissing, dotFailed } outcome = dotFailed;
    std::string output;  // the picture, when rendered
    // Why not: the system's reason when dot could not be started (or was not
    // found), else what dot wrote on standard error, else how it ended.
    std::string reason;
};

// Runs `dot -TFORMAT` (FORMAT: svg, png, ...) on DOT.
KRMWTARN_API Rendering renderWithDot(const std::string& dot, const std::string& format);

}  // namespace krdiagram
