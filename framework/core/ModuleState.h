// State of a module: the executable or library that the framework is linked into. Each module has one of its
// own.
//
// AFX_MANAGE_STATE marks the way into the module from outside (an exported function, a COM method): for its
// scope the module's activation context (manifest resource 2) is active, so that common controls are themed
// in any host, and temporary objects made inside live until its end. There is nothing to switch between,
// because the framework is linked into the module: "the current state" is always the module's own.
#pragma once

#include "Types.h"

#include <atomic>
#include <memory>
#include <vector>

class COleObjectFactory;
class CWinApp;
struct AFX_THREAD_STATE;

/// A lock of the system's own. std::mutex throws, and the library's own exceptions bring its streams and
/// locales into the module, which doubles its size with GCC 14.
class AFX_MODULE_LOCK {
public:
    void lock() noexcept { ::AcquireSRWLockExclusive(&m_lock); }
    void unlock() noexcept { ::ReleaseSRWLockExclusive(&m_lock); }

private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};

/// Made before the module's first global object of the framework, destroyed after the last.
class AFX_MODULE_STATE {
public:
    AFX_MODULE_STATE();
    ~AFX_MODULE_STATE();
    AFX_MODULE_STATE(const AFX_MODULE_STATE&) = delete;
    AFX_MODULE_STATE& operator=(const AFX_MODULE_STATE&) = delete;

    /// The calling thread's state, made on first use; null when memory is out or once the module
    /// state is gone.
    static AFX_THREAD_STATE* Thread() noexcept;
    /// Frees the calling thread's state, at the end of the thread.
    void ReleaseThread() noexcept;

    /// The module's activation context, made on first use; INVALID_HANDLE_VALUE when it has no manifest of
    /// its own.
    HANDLE ActivationContext() noexcept;

    HINSTANCE m_hCurrentInstanceHandle; ///< the module itself, valid from the start
    HINSTANCE m_hCurrentResourceHandle; ///< where resources are loaded from
    CWinApp* m_pCurrentWinApp = nullptr;
    COleObjectFactory* m_pFactoryList = nullptr; ///< head of the list that the class factories keep
    std::atomic<LONG> m_nObjectCount = 0;        ///< active objects and locks

private:
    AFX_THREAD_STATE* AddThread() noexcept;

    AFX_MODULE_LOCK m_lock;
    std::vector<std::unique_ptr<AFX_THREAD_STATE>> m_threads;
    bool m_activationTried = false;
    HANDLE m_activation = INVALID_HANDLE_VALUE;
};

/// Activates the module's activation context for a scope.
class AfxActivationScope {
public:
    AfxActivationScope() noexcept;
    ~AfxActivationScope();
    AfxActivationScope(const AfxActivationScope&) = delete;
    AfxActivationScope& operator=(const AfxActivationScope&) = delete;

private:
    ULONG_PTR m_cookie = 0;
    bool m_active = false;
};

/// Temporary objects (CWnd::FromHandle and the like) that are made inside the innermost scope die with it.
class AfxTemporaryScope {
public:
    AfxTemporaryScope() noexcept;
    ~AfxTemporaryScope();
    AfxTemporaryScope(const AfxTemporaryScope&) = delete;
    AfxTemporaryScope& operator=(const AfxTemporaryScope&) = delete;

private:
    AFX_THREAD_STATE* m_thread;
    size_t m_mark = 0;
};

/// What AFX_MANAGE_STATE puts on the stack.
class AFX_MAINTAIN_STATE {
public:
    explicit AFX_MAINTAIN_STATE(AFX_MODULE_STATE* pModuleState) { static_cast<void>(pModuleState); }

private:
    AfxActivationScope m_activation;
    AfxTemporaryScope m_temporary;
};

#define AFX_MANAGE_STATE(pModuleState) const AFX_MAINTAIN_STATE afxModuleState(pModuleState);

/// The state of this module.
AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState();

/// The module's application object, or null; the module itself; where its resources are loaded from.
CWinApp* AFXAPI AfxGetApp();
HINSTANCE AFXAPI AfxGetInstanceHandle();
HINSTANCE AFXAPI AfxGetResourceHandle();
void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource);

/// Count of what keeps the module loaded; AfxOleCanExitApp is TRUE at zero.
void AFXAPI AfxOleLockApp();
void AFXAPI AfxOleUnlockApp();
BOOL AFXAPI AfxOleCanExitApp();
