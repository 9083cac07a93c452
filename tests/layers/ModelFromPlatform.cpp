// ModelFromPlatform.cpp — a platform source that reaches up into the model.
// It must not compile with the platform's include directories: the platform
// sees only itself.
#include <krmwtarn/model/dbd/DSDBD.h>
