// COleControlModule: the application object of a library of controls.
#pragma once

#include "core/App.h"

class COleControlModule : public CWinApp {
    DECLARE_DYNAMIC(COleControlModule)

public:
    BOOL InitInstance() override;
    int ExitInstance() override;
};
