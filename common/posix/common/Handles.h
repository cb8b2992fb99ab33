// Move-only owners of what the system gives.
#pragma once

#include <cstdlib>
#include <memory>
#include <utility>

#include <dirent.h>
#include <unistd.h>
#include <windows.h>

namespace common {

/// Passes a pointer to the function that releases it.
template <auto Release>
struct Releaser {
    template <class Type>
    void operator()(Type* pointer) const noexcept {
        Release(pointer);
    }
};

/// An open folder.
using UniqueFolder = std::unique_ptr<DIR, Releaser<&closedir>>;
/// Text that a function of the system allocated.
using UniqueText = std::unique_ptr<char, Releaser<&std::free>>;

/// Closes a descriptor once. Empty for a negative one, which is how the system reports a failure.
class UniqueHandle {
public:
    UniqueHandle() = default;
    explicit UniqueHandle(HANDLE file) noexcept : m_file(file) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_file(std::exchange(other.m_file, -1)) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        std::swap(m_file, other.m_file);
        return *this;
    }
    ~UniqueHandle() { reset(); }

    explicit operator bool() const { return m_file >= 0; }
    HANDLE get() const { return m_file; }
    void reset() noexcept {
        if (m_file >= 0) {
            close(std::exchange(m_file, -1));
        }
    }

private:
    HANDLE m_file = -1;
};

} // namespace common
