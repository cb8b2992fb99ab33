#include "MXOVDocViewApp.h"

BOOL CMXOVDocViewApp::InitInstance() {
    return COleControlModule::InitInstance();
}

int CMXOVDocViewApp::ExitInstance() {
    return COleControlModule::ExitInstance();
}
