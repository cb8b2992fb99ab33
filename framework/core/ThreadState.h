// What the framework keeps for each thread of a module. Internal: no part of the documented classes.
#pragma once

#include "Object.h"

#include <map>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

class CWnd;

namespace framework {

/// The temporary objects of a thread: wrappers that do not own their handle. Within their life the same
/// handle returns the same object.
class TemporaryObjects {
public:
    /// The object of a handle that is kept in `Member`; null for a null handle.
    template <class Object, auto Member, class Handle>
    Object* Get(Handle handle) {
        if (!handle) {
            return nullptr;
        }
        const Key key(handle, &kTag<Object>);
        if (const auto found = m_objects.find(key); found != m_objects.end()) {
            return static_cast<Object*>(found->second.get());
        }
        Owner owner(new Object, [](CObject* object) {
            static_cast<Object*>(object)->*Member = nullptr;
            delete object;
        });
        auto* object = static_cast<Object*>(owner.get());
        object->*Member = handle;
        m_order.push_back(key);
        m_objects.emplace(key, std::move(owner));
        return object;
    }

    size_t Mark() const noexcept { return m_order.size(); }
    /// Destroys what was made since the mark.
    void Release(size_t mark) noexcept;

private:
    template <class Object>
    static constexpr char kTag = 0; ///< its address stands for the type
    using Key = std::pair<const void*, const char*>;
    using Owner = std::unique_ptr<CObject, void (*)(CObject*)>;

    std::map<Key, Owner> m_objects;
    std::vector<Key> m_order;
};

struct ThreadState {
    std::unordered_map<HWND, CWnd*> windows; ///< the permanent map
    std::unordered_map<HWND, WNDPROC>
        orphans; ///< subclassed once, no object any more: where their messages go
    TemporaryObjects temporaries;
    MSG message{};             ///< the one being handled
    HWND exchanging = nullptr; ///< the dialog whose data is being exchanged
    CWnd* creating = nullptr;  ///< object that waits for its window
    HHOOK creationHook = nullptr;
    /// Objects that were released while a message was being handled, perhaps by their own windows: deleted
    /// when the outermost message is done.
    std::vector<std::unique_ptr<CObject>> condemned;
};

} // namespace framework
