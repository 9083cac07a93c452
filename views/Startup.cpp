// Startup.cpp — what the view library constructs when it loads: the view
// registration. The model's registration record is made by the model library,
// which the loader initialises first because this library depends on it.
#include <krmwtarn/views/EwswtarnViews.h>

#ifdef _WIN32
#include <windows.h>
// Per-thread attach and detach notifications are of no use to this library.
BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(instance);
    return TRUE;
}
#endif

init_ewswtarn_views ewswtarnViewRegistration;
