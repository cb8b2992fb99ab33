// The one thread of a module's objects. Internal: no part of the documented classes.
//
// Objects of one module share module-wide values without locks, so only one thread at a time may have any.
// The class factories refuse the others (Entry) until the last object is gone or its thread has ended.
#pragma once

#include "Types.h"

class CCmdTarget;

namespace framework {

class Apartment {
public:
    /// A place for an object that is being created, for the life of this object.
    class Entry {
    public:
        Entry() noexcept;
        ~Entry();
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;
        /// FALSE while objects of another thread live.
        [[nodiscard]] bool IsAllowed() const noexcept { return m_apartment != 0; }

    private:
        ULONG m_apartment;
    };

    /// Counts an object of the calling thread. The result goes to Leave.
    static ULONG Join() noexcept;
    static void Leave(ULONG apartment) noexcept;
    /// The calling thread ends. Its objects are not counted any longer; nobody can use or destroy them.
    static void EndThread() noexcept;

    /// Takes over one reference to an object, the last one, which was released on a wrong thread. Without
    /// memory for that, the object stays for good.
    static void Defer(CCmdTarget& object, DWORD thread) noexcept;
    /// Releases the objects of the calling thread that were deferred. Called wherever a thread enters the
    /// module.
    static void ReleaseDeferred() noexcept;
};

} // namespace framework
