// The module's application object.
#pragma once

#include "afxctl.h"

class CMXOVDocViewApp : public COleControlModule {
public:
    BOOL InitInstance() override;
    int ExitInstance() override;
};
