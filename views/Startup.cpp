// Startup.cpp — what the library constructs when it loads, in this order (one
// translation unit, so the order of definition is the order of construction):
// first the component's registration record, then the view registration.
#include "model/framework/Registration.h"
#include "views/EwswtarnViews.h"

#ifdef _WIN32
#include <windows.h>
// Per-thread attach and detach notifications are of no use to this library.
BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(instance);
    return TRUE;
}
#endif

DSRegistration ewswtarnRegistration(ewswtarnFactory, ewswtarnClassTable, ewswtarnComponentName);
init_ewswtarn_views ewswtarnViewRegistration;
