#include "ModuleState.h"

#include "ThreadState.h"

#include <mutex>
#include <new>

extern "C" IMAGE_DOS_HEADER __ImageBase; // the module's own first byte, supplied by the linker

namespace {

// Slot of the thread states. Outlives the module state, so that late window messages find it closed. A slot
// and not thread_local: the states must be freed when the library is unloaded while its threads live on.
constinit DWORD threadSlot = TLS_OUT_OF_INDEXES;

HANDLE CreateModuleActivationContext(HINSTANCE instance) noexcept {
    ACTCTX context = {};
    context.cbSize = sizeof(context);
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.hModule = instance;
    context.lpResourceName = MAKEINTRESOURCE(2); // a library's manifest for its own code
    return ::CreateActCtx(&context);
}

} // namespace

AFX_MODULE_STATE::AFX_MODULE_STATE()
    : m_hCurrentInstanceHandle(reinterpret_cast<HINSTANCE>(&__ImageBase)),
      m_hCurrentResourceHandle(m_hCurrentInstanceHandle) {
    threadSlot = ::TlsAlloc();
}

AFX_MODULE_STATE::~AFX_MODULE_STATE() {
    ::TlsFree(threadSlot);
    threadSlot = TLS_OUT_OF_INDEXES;
    if (m_activation != INVALID_HANDLE_VALUE) {
        ::ReleaseActCtx(m_activation);
    }
}

AFX_THREAD_STATE* AFX_MODULE_STATE::Thread() noexcept {
    AFX_MODULE_STATE* module = AfxGetStaticModuleState();
    if (threadSlot == TLS_OUT_OF_INDEXES) {
        return nullptr;
    }
    auto* thread = static_cast<AFX_THREAD_STATE*>(::TlsGetValue(threadSlot));
    return thread ? thread : module->AddThread();
}

AFX_THREAD_STATE* AFX_MODULE_STATE::AddThread() noexcept {
    try {
        auto state = std::make_unique<AFX_THREAD_STATE>();
        const std::lock_guard lock(m_lock);
        m_threads.push_back(std::move(state));
        ::TlsSetValue(threadSlot, m_threads.back().get());
        return m_threads.back().get();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void AFX_MODULE_STATE::ReleaseThread() noexcept {
    const void* thread = threadSlot == TLS_OUT_OF_INDEXES ? nullptr : ::TlsGetValue(threadSlot);
    if (thread) {
        ::TlsSetValue(threadSlot, nullptr);
        const std::lock_guard lock(m_lock);
        std::erase_if(m_threads, [thread](const auto& state) { return state.get() == thread; });
    }
}

HANDLE AFX_MODULE_STATE::ActivationContext() noexcept {
    const std::lock_guard lock(m_lock);
    if (!m_activationTried) {
        m_activationTried = true;
        m_activation = CreateModuleActivationContext(m_hCurrentInstanceHandle);
    }
    return m_activation;
}

AfxActivationScope::AfxActivationScope() noexcept {
    const HANDLE context = AfxGetStaticModuleState()->ActivationContext();
    m_active = context != INVALID_HANDLE_VALUE && ::ActivateActCtx(context, &m_cookie);
}

AfxActivationScope::~AfxActivationScope() {
    if (m_active) {
        ::DeactivateActCtx(0, m_cookie);
    }
}

AfxTemporaryScope::AfxTemporaryScope() noexcept
    : m_thread(AFX_MODULE_STATE::Thread()), m_mark(m_thread ? m_thread->temporaries.Mark() : 0) {}

AfxTemporaryScope::~AfxTemporaryScope() {
    if (m_thread) {
        m_thread->temporaries.Release(m_mark);
    }
}

AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState() {
    static AFX_MODULE_STATE state;
    return &state;
}

CWinApp* AFXAPI AfxGetApp() {
    return AfxGetStaticModuleState()->m_pCurrentWinApp;
}

HINSTANCE AFXAPI AfxGetInstanceHandle() {
    return AfxGetStaticModuleState()->m_hCurrentInstanceHandle;
}

HINSTANCE AFXAPI AfxGetResourceHandle() {
    return AfxGetStaticModuleState()->m_hCurrentResourceHandle;
}

void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource) {
    AfxGetStaticModuleState()->m_hCurrentResourceHandle = hInstResource;
}

void AFXAPI AfxOleLockApp() {
    ++AfxGetStaticModuleState()->m_nObjectCount;
}

void AFXAPI AfxOleUnlockApp() {
    --AfxGetStaticModuleState()->m_nObjectCount;
}

BOOL AFXAPI AfxOleCanExitApp() {
    return AfxGetStaticModuleState()->m_nObjectCount == 0;
}
