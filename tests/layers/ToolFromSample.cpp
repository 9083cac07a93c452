// ToolFromSample.cpp — a source of the tool's sample layer that reaches up into
// the tool by the project's root. It must not compile with the sample layer's
// include directories: the tool's layers do not see the source tree.
#include "tools/krmwtarn/Commands.h"
