// Temporary objects of the calling thread. Internal: no part of the documented classes.
#pragma once

#include "ModuleState.h"
#include "ThreadState.h"

#include <new>

/// The temporary object of a handle that is kept in `Member`; null for a null handle. Throws when memory is
/// out.
template <class Object, auto Member, class Handle>
Object* AfxTemporary(Handle handle) {
    AFX_THREAD_STATE* thread = AFX_MODULE_STATE::Thread();
    if (!thread) {
        throw std::bad_alloc();
    }
    return thread->temporaries.Get<Object, Member>(handle);
}
