// DllGetClassObject and DllCanUnloadNow of a library of controls. A library that exports these names gets
// them from here unless it has its own; nothing else pulls this file in.
#include "OleFactory.h"

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv) {
    return AfxDllGetClassObject(rclsid, riid, ppv);
}

STDAPI DllCanUnloadNow() {
    return AfxDllCanUnloadNow();
}
