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

class AFX_MODULE_STATE;
class COleObjectFactory;
class CWinApp;

namespace framework {

struct ThreadState;

/// A lock of the system's own. std::mutex throws, and the library's own exceptions bring its streams and
/// locales into the module, which doubles its size with GCC 14.
class ModuleLock {
public:
    void lock() noexcept { ::AcquireSRWLockExclusive(&m_lock); }
    void unlock() noexcept { ::ReleaseSRWLockExclusive(&m_lock); }

private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};

/// What a module keeps.
class ModuleState {
public:
    ModuleState();
    ~ModuleState();
    ModuleState(const ModuleState&) = delete;
    ModuleState& operator=(const ModuleState&) = delete;

    /// The calling thread's state, made on first use; null when memory is out or once the module
    /// state is gone.
    static ThreadState* Thread() noexcept;
    /// Frees the calling thread's state, at the end of the thread.
    void ReleaseThread() noexcept;

    /// The module's activation context, made on first use; INVALID_HANDLE_VALUE when it has no manifest of
    /// its own.
    HANDLE ActivationContext() noexcept;

    HINSTANCE m_hCurrentInstanceHandle; ///< the module itself, valid from the start
    CWinApp* m_pCurrentWinApp = nullptr;
    COleObjectFactory* m_pFactoryList = nullptr; ///< head of the list that the class factories keep
    std::atomic<LONG> m_nObjectCount = 0;        ///< active objects and locks

private:
    ThreadState* AddThread() noexcept;

    ModuleLock m_lock;
    std::vector<std::unique_ptr<ThreadState>> m_threads;
    bool m_activationTried = false;
    HANDLE m_activation = INVALID_HANDLE_VALUE;
};

/// Activates the module's activation context for a scope.
class ActivationScope {
public:
    ActivationScope() noexcept;
    ~ActivationScope();
    ActivationScope(const ActivationScope&) = delete;
    ActivationScope& operator=(const ActivationScope&) = delete;

private:
    ULONG_PTR m_cookie = 0;
    bool m_active = false;
};

/// Temporary objects (CWnd::FromHandle and the like) that are made inside the innermost scope die with it.
class TemporaryScope {
public:
    TemporaryScope() noexcept;
    ~TemporaryScope();
    TemporaryScope(const TemporaryScope&) = delete;
    TemporaryScope& operator=(const TemporaryScope&) = delete;

private:
    ThreadState* m_thread;
    size_t m_mark = 0;
};

/// What AFX_MANAGE_STATE puts on the stack.
class ManagedState {
public:
    explicit ManagedState(AFX_MODULE_STATE* pModuleState) { static_cast<void>(pModuleState); }

private:
    ActivationScope m_activation;
    TemporaryScope m_temporary;
};

} // namespace framework

/// Made before the module's first global object of the framework, destroyed after the last.
class AFX_MODULE_STATE : public framework::ModuleState {};

#define AFX_MANAGE_STATE(pModuleState) const framework::ManagedState afxModuleState(pModuleState);

/// The state of this module.
AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState();

/// The module's application object, or null; the module itself, which its resources are loaded from.
CWinApp* AFXAPI AfxGetApp();
HINSTANCE AFXAPI AfxGetInstanceHandle();
HINSTANCE AFXAPI AfxGetResourceHandle();

/// Count of what keeps the module loaded; AfxOleCanExitApp is TRUE at zero.
void AFXAPI AfxOleLockApp();
void AFXAPI AfxOleUnlockApp();
BOOL AFXAPI AfxOleCanExitApp();
