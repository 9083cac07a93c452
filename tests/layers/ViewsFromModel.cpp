// ViewsFromModel.cpp — a model source that reaches up into the views. It must
// not compile with the model's include directories.
#include <krmwtarn/views/EwswtarnViews.h>
