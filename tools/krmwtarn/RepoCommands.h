// RepoCommands.h — what the commands that make definitions (`load`, `import`)
// need of the repository commands (RepoCommands.cpp): storing what they made
// in the repository given by --repo. Messages go to `err`.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

class _ADObject;
namespace krstore {
class Repository;
}

namespace repocmd {

// A command that makes definitions (`load`, `import`) run against a
// repository: `make` may read the repository's units first (so that names
// resolve against what is stored), builds the definitions and puts their roots
// in `roots`; when it answers 0, those units are stored in one go and `out`
// hears how many, unless `quiet` (its output is a document). Nothing is stored
// when it answers anything else.
int storeMade(const std::string& repo, bool quiet, std::ostream& out, std::ostream& err,
              const std::function<int(krstore::Repository&, std::vector<_ADObject*>& roots)>& make);

}  // namespace repocmd
