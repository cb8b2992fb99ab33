// A library on the framework, for the tests of loading and unloading one.
#include "afxwin.h"

#include <stdexcept>

namespace {

int* ended = nullptr; ///< counts the calls of ExitInstance, in the host

class TestApp : public CWinApp {
public:
    BOOL InitInstance() override {
        started = true;
        return ::GetEnvironmentVariable(L"TEST_MODULE_REFUSES", nullptr, 0) == 0;
    }
    int ExitInstance() override {
        if (ended) {
            ++*ended;
        }
        return 0;
    }

    bool started = false;
};

class Window : public CWnd {
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_APP) {
            throw std::runtime_error("thrown by a test");
        }
        FromHandle(::GetDesktopWindow());
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

CFont font;
TestApp app;

} // namespace

/// 0, or the number of the first thing that was not as it should be.
extern "C" __declspec(dllexport) int RunTestModule(HINSTANCE self, int* endCounter) {
    AFX_MANAGE_STATE(AfxGetStaticModuleState())
    ended = endCounter;
    if (!app.started || AfxGetApp() != &app) {
        return 1;
    }
    if (AfxGetInstanceHandle() != self || AfxGetResourceHandle() != self || app.m_hInstance != self) {
        return 2;
    }
    Window window;
    if (!window.CreateEx(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr)) {
        return 3;
    }
    window.SendMessage(WM_APP);
    if (!font.CreatePointFont(100, L"Tahoma")) {
        return 4;
    }
    if (!AfxOleCanExitApp()) {
        return 5;
    }
    AfxOleLockApp();
    const BOOL locked = !AfxOleCanExitApp();
    AfxOleUnlockApp();
    return locked && AfxOleCanExitApp() ? 0 : 6;
}

/// Whether the activation context of the module's own manifest is active inside it.
extern "C" __declspec(dllexport) BOOL HasActivationContext() {
    AFX_MANAGE_STATE(AfxGetStaticModuleState())
    HANDLE context = nullptr;
    const BOOL active = ::GetCurrentActCtx(&context) && context;
    ::ReleaseActCtx(context);
    return active;
}
