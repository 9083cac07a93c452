// DiagramFromJson.cpp — a source of the tool's JSON layer that reaches into its
// sibling, the diagram layer. It must not compile with the JSON layer's include
// directories: a tool layer sees the library's layers below it, not its peers.
#include <krmwtarn/diagram/DotWriter.h>
