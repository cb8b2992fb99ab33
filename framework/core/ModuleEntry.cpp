// DllMain of a library that the framework is linked into; an executable does not pull this file in.
#include "Apartment.h"
#include "App.h"

using namespace framework;

namespace {

bool initialised = false; // InitInstance succeeded: ExitInstance is due

BOOL StartModule() noexcept {
    CWinApp* app = AfxGetApp();
    try {
        initialised = !app || app->InitInstance();
    } catch (...) {
        initialised = false;
    }
    return initialised;
}

void EndModule() noexcept {
    CWinApp* app = AfxGetApp();
    if (!app || !initialised) {
        return;
    }
    initialised = false;
    try {
        app->ExitInstance();
    } catch (...) {
        return; // the library is unloaded anyway
    }
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return StartModule();
    case DLL_PROCESS_DETACH:
        EndModule();
        break;
    case DLL_THREAD_DETACH:
        Apartment::EndThread();
        AfxGetStaticModuleState()->ReleaseThread();
        break;
    default:
        break;
    }
    return TRUE;
}
