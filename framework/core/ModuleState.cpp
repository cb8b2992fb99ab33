#include "ModuleState.h"

#include "ThreadState.h"

#include <mutex>
#include <new>

using namespace framework;

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

namespace framework {

ModuleState::ModuleState() : m_hCurrentInstanceHandle(reinterpret_cast<HINSTANCE>(&__ImageBase)) {
    threadSlot = ::TlsAlloc();
}

ModuleState::~ModuleState() {
    ::TlsFree(threadSlot);
    threadSlot = TLS_OUT_OF_INDEXES;
    if (m_activation != INVALID_HANDLE_VALUE) {
        ::ReleaseActCtx(m_activation);
    }
}

ThreadState* ModuleState::Thread() noexcept {
    ModuleState* module = AfxGetStaticModuleState();
    if (threadSlot == TLS_OUT_OF_INDEXES) {
        return nullptr;
    }
    auto* thread = static_cast<ThreadState*>(::TlsGetValue(threadSlot));
    return thread ? thread : module->AddThread();
}

ThreadState* ModuleState::AddThread() noexcept {
    try {
        auto state = std::make_unique<ThreadState>();
        const std::lock_guard lock(m_lock);
        m_threads.push_back(std::move(state));
        ::TlsSetValue(threadSlot, m_threads.back().get());
        return m_threads.back().get();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void ModuleState::ReleaseThread() noexcept {
    const void* thread = threadSlot == TLS_OUT_OF_INDEXES ? nullptr : ::TlsGetValue(threadSlot);
    if (thread) {
        ::TlsSetValue(threadSlot, nullptr);
        const std::lock_guard lock(m_lock);
        std::erase_if(m_threads, [thread](const auto& state) { return state.get() == thread; });
    }
}

HANDLE ModuleState::ActivationContext() noexcept {
    const std::lock_guard lock(m_lock);
    if (!m_activationTried) {
        m_activationTried = true;
        m_activation = CreateModuleActivationContext(m_hCurrentInstanceHandle);
    }
    return m_activation;
}

ActivationScope::ActivationScope() noexcept {
    const HANDLE context = AfxGetStaticModuleState()->ActivationContext();
    m_active = context != INVALID_HANDLE_VALUE && ::ActivateActCtx(context, &m_cookie);
}

ActivationScope::~ActivationScope() {
    if (m_active) {
        ::DeactivateActCtx(0, m_cookie);
    }
}

TemporaryScope::TemporaryScope() noexcept
    : m_thread(ModuleState::Thread()), m_mark(m_thread ? m_thread->temporaries.Mark() : 0) {}

TemporaryScope::~TemporaryScope() {
    if (m_thread) {
        m_thread->temporaries.Release(m_mark);
    }
}

} // namespace framework

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
    return AfxGetInstanceHandle();
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
