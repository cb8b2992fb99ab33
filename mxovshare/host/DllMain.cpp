#include "mxovshare.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        mxovshare::OVApplication::hMXOVResInstance = instance;
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}
