#include "files/DiskFile.h"

#include "common/Clock.h"
#include "files/FileFailure.h"

#include <algorithm>

namespace mxovshare {

DiskSource::DiskSource(const std::wstring& path)
    : m_handle(OpenDiskFile(path)), m_file(m_handle.get(), path), m_path(path),
      m_stamp(StampOf(m_handle.get())) {}

void DiskSource::RequireUnchanged() const {
    if (StampOf(m_handle.get()) != m_stamp) {
        throw FileChanged(m_path);
    }
}

bool DiskSource::IsSettled() const {
    // File systems take times from a clock that ticks every few milliseconds.
    constexpr std::int64_t kTick = 200'000; // in 100 nanoseconds
    const FILETIME time = common::SystemTime();
    const auto now = static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
    const std::int64_t age = now - std::max(m_stamp.changed, m_stamp.written);
    return age < 0 || age > kTick;
}

} // namespace mxovshare
