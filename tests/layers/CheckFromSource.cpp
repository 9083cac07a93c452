// CheckFromSource.cpp — compiled with the deck layer's include directories only:
// the check layer sits above it, so its header must not be found.
#include <krmwtarn/check/Check.h>
