// Temporary objects of the calling thread. Internal: no part of the documented classes.
#pragma once

#include "ModuleState.h"
#include "ThreadState.h"

#include <new>

namespace framework {

/// The temporary object of a handle that is kept in `Member`; null for a null handle. Throws when memory is
/// out.
template <class Object, auto Member, class Handle>
Object* TemporaryOf(Handle handle) {
    ThreadState* thread = ModuleState::Thread();
    if (!thread) {
        throw std::bad_alloc();
    }
    return thread->temporaries.Get<Object, Member>(handle);
}

} // namespace framework
