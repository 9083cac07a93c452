// Finding.h — the one shape of everything a user is told is wrong: by the deck
// reader (a place in a deck), by the checks (a rule's code, the object's path,
// and its deck place when it came from one), by the document reader (a JSON
// pointer) and by the repository (a refusal's number as its code).
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <string>

class KVException;

namespace kr {

enum class Severity { Error, Warning };

struct KRMWTARN_API Finding {
    std::string file;  // the file it is about; empty for none
    int line = 0;      // its card or line (from 1); 0 for the file as a whole
    int column = 0;
    Severity severity = Severity::Error;
    std::string message;  // what is wrong, in the user's words
    std::string code;     // a stable code (SEG-LEVELS, 2514); empty for none
    std::string path;     // the object or the document place (HOSPDBD/PATIENT, /documents/0/root)

    bool located() const noexcept { return !file.empty(); }
    // "file:line:column: error: [CODE] message"; "file: ..." for the file as a
    // whole; "PATH: ..." when no file is known; "[CODE] " only with a code.
    std::string text() const;
};

// A refusal of the model or the repository as a finding: its sentence, its
// number as the code, `where` as the path.
KRMWTARN_API Finding findingOf(const KVException& e, std::string where = {});

}  // namespace kr
