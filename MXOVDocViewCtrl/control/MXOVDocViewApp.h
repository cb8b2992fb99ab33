// The module's application object, and its version.
#pragma once

#include "afxctl.h"

// The version of the type library and of the state that a control keeps.
inline constexpr WORD kMajorVersion = 1;
inline constexpr WORD kMinorVersion = 0;

class CMXOVDocViewApp : public COleControlModule {
public:
    BOOL InitInstance() override;
    int ExitInstance() override;
};
