// CWinThread and CWinApp, as far as a library has them.
//
// A module has one global object of a class derived from CWinApp. In a library, DllMain (supplied here) calls
// InitInstance when the library is loaded, which fails when that returns FALSE, and ExitInstance once before
// it is unloaded, still before any global object is destroyed. An executable calls them itself; WinMain and a
// message pump are not supplied.
#pragma once

#include "CmdTarget.h"
#include "ModuleState.h"

class CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)

public:
    CWinThread() = default;

    virtual BOOL InitInstance();
    virtual int ExitInstance();
};

class CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)

public:
    /// Registers itself as the module's application object.
    CWinApp();
    ~CWinApp() override;

    BOOL InitInstance() override;
    int ExitInstance() override;

    HINSTANCE m_hInstance; ///< the module
};
