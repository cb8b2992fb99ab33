#include "OleControlModule.h"

IMPLEMENT_DYNAMIC(COleControlModule, CWinApp)

BOOL COleControlModule::InitInstance() {
    return CWinApp::InitInstance();
}

int COleControlModule::ExitInstance() {
    return CWinApp::ExitInstance();
}
