#include "care/CheckSource.h"

#include <algorithm>
#include <limits>

namespace viewer {

namespace {

// The computer of a path on the network; of other paths the drive.
std::wstring DriveOrComputer(const std::wstring& path) {
    constexpr std::size_t kDriveLength = 2;
    const bool isOnNetwork = path.starts_with(L"\\\\");
    return path.substr(0, isOnNetwork ? path.find(L'\\', kDriveLength) : kDriveLength);
}

} // namespace

docview::FileStatus CheckSource::Status(const std::wstring& path) const {
    if (!m_progress.OnProgress(path, 0, 0)) {
        throw CheckCancelled();
    }
    const auto known = m_known.find(path);
    if (known != m_known.end()) {
        return known->second;
    }
    const std::wstring place = DriveOrComputer(path);
    docview::FileStatus status = {.noAnswer = true};
    if (!m_silent.contains(place)) {
        status = m_disk.Status(path);
    }
    if (status.noAnswer) {
        m_silent.insert(place);
    }
    m_known.emplace(path, status);
    return status;
}

int CheckSource::FileSize(const std::wstring& path) const {
    const docview::FileStatus status = Status(path);
    constexpr std::uint64_t kMost = std::numeric_limits<int>::max();
    return status.exists && !status.isFolder ? static_cast<int>(std::min(status.size, kMost)) : 0;
}

} // namespace viewer
