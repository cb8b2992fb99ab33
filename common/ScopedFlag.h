// A flag that is set while a scope lasts.
#pragma once

namespace common {

/// Sets a flag to true and back to what it was at the end of its scope.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) noexcept : m_flag(flag), m_before(flag) { m_flag = true; }
    ~ScopedFlag() { m_flag = m_before; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& m_flag;
    const bool m_before;
};

} // namespace common
