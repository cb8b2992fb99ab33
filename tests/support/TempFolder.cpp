#include "TempFolder.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    static std::atomic<int> count = 0;
    m_path = (fs::temp_directory_path() /
              (L"mxov-test-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count)))
                 .wstring();
    fs::create_directories(m_path);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::wstring TempFolder::Write(const std::wstring& name, std::string_view bytes) const {
    const fs::path path = *this / name;
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("a test file cannot be written");
    }
    return path.wstring();
}

std::wstring TempFolder::WriteSized(const std::wstring& name, unsigned long long size) const {
    return Write(name, std::string(size, 'x'));
}

void TempFolder::SetTime(const std::wstring& name, const SYSTEMTIME& utc) const {
    FILETIME time = {};
    SystemTimeToFileTime(&utc, &time);
    const HANDLE file = CreateFileW((*this / name).c_str(), FILE_WRITE_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE || !SetFileTime(file, nullptr, nullptr, &time)) {
        throw std::runtime_error("a test file's time cannot be set");
    }
    CloseHandle(file);
}

std::string TempFolder::Read(const std::wstring& name) const {
    std::ifstream file(fs::path(*this / name), std::ios::binary | std::ios::ate);
    std::string bytes(file ? static_cast<std::size_t>(file.tellg()) : 0, '\0');
    file.seekg(0).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

int TempFolder::EntryCount() const {
    return static_cast<int>(std::distance(fs::directory_iterator(m_path), fs::directory_iterator()));
}
