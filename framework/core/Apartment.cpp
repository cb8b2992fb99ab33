#include "Apartment.h"

#include "CmdTarget.h"
#include "ModuleState.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>
#include <vector>

namespace framework {

namespace {

struct DeferredObject {
    CCmdTarget* object;
    DWORD thread;
};

struct ApartmentState {
    ModuleLock lock;
    DWORD thread = 0;    ///< of the objects counted
    ULONG apartment = 0; ///< counts the apartments up; 0 is none
    LONG objects = 0;
    std::vector<DeferredObject> deferred;
    std::atomic<bool> hasDeferred = false;

    ULONG Count() noexcept {
        if (objects++ == 0) {
            thread = ::GetCurrentThreadId();
            ++apartment;
        }
        return apartment;
    }
};

ApartmentState& State() noexcept {
    static ApartmentState state;
    return state;
}

} // namespace

Apartment::Entry::Entry() noexcept : m_apartment(0) {
    ApartmentState& state = State();
    const std::lock_guard lock(state.lock);
    if (state.objects == 0 || state.thread == ::GetCurrentThreadId()) {
        m_apartment = state.Count();
    }
}

Apartment::Entry::~Entry() {
    Leave(m_apartment);
}

ULONG Apartment::Join() noexcept {
    ApartmentState& state = State();
    const std::lock_guard lock(state.lock);
    return state.Count();
}

void Apartment::Leave(ULONG apartment) noexcept {
    ApartmentState& state = State();
    const std::lock_guard lock(state.lock);
    if (apartment != 0 && apartment == state.apartment && state.objects > 0) {
        --state.objects;
    }
}

void Apartment::EndThread() noexcept {
    ApartmentState& state = State();
    const std::lock_guard lock(state.lock);
    if (state.thread == ::GetCurrentThreadId()) {
        state.objects = 0;
        state.thread = 0;
    }
}

void Apartment::Defer(CCmdTarget& object, DWORD thread) noexcept {
    ApartmentState& state = State();
    const std::lock_guard lock(state.lock);
    try {
        state.deferred.push_back({&object, thread});
        state.hasDeferred = true;
    } catch (const std::bad_alloc&) {
        return;
    }
}

void Apartment::ReleaseDeferred() noexcept {
    ApartmentState& state = State();
    while (state.hasDeferred) {
        CCmdTarget* object = nullptr;
        {
            const std::lock_guard lock(state.lock);
            const auto own =
                std::ranges::find(state.deferred, ::GetCurrentThreadId(), &DeferredObject::thread);
            if (own == state.deferred.end()) {
                return;
            }
            object = own->object;
            state.deferred.erase(own);
            state.hasDeferred = !state.deferred.empty();
        }
        object->InternalRelease();
    }
}

} // namespace framework
