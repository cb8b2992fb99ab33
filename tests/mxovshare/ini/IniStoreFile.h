// The fixture of the tests of the store: one file that was read, and what other programs do to it.
#pragma once

#include "common/Handles.h"
#include "ini/IniStore.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <string_view>

namespace mxovshare {

inline constexpr SYSTEMTIME kOldTime = {2020, 1, 0, 2, 3, 4, 5, 0};

/// Waits until a burst of calls is over.
inline void EndBurst() {
    LARGE_INTEGER frequency = {};
    LARGE_INTEGER start = {};
    LARGE_INTEGER now = {};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    do {
        QueryPerformanceCounter(&now);
    } while (now.QuadPart - start.QuadPart < frequency.QuadPart / 2000);
}

inline void Overwrite(const std::wstring& path, std::string_view bytes) {
    const common::UniqueHandle file = common::OwnFile(CreateFileW(
        path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    DWORD count = 0;
    ASSERT_TRUE(WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr));
    ASSERT_TRUE(SetEndOfFile(file.get()));
    EndBurst();
}

inline common::UniqueHandle Lock(const std::wstring& path, DWORD share) {
    return common::OwnFile(
        CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

/// One INI file and a store that has read it.
class IniStoreFile : public testing::Test {
protected:
    explicit IniStoreFile(std::string_view bytes = "[s]\nk=old\n")
        : m_file(m_folder.Write(L"mxinfo.ini", bytes)) {
        m_folder.SetTime(L"mxinfo.ini", kOldTime);
        m_store.Value(L"s", L"k", m_file);
    }

    std::wstring Value(const std::wstring& key = L"k") { return m_store.Value(L"s", key, m_file); }
    void SetValue(const std::wstring& key, const std::wstring& value) {
        m_store.SetValue(L"s", key, value, m_file);
    }
    std::string Bytes() const { return m_folder.Read(L"mxinfo.ini"); }

    const TempFolder m_folder;
    const std::wstring m_file;
    IniStore m_store{50}; // milliseconds of waiting for a lock
};

} // namespace mxovshare
