// A folder whose path is longer than the file functions take without a prefix.
#pragma once

#include "TempFolder.h"

#include "common/LongPath.h"

#include <windows.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace mxovshare {

/// Nested folders inside a temporary one, removed with the files named through it.
class LongFolder {
public:
    explicit LongFolder(std::size_t length) {
        std::wstring path = m_root.Path();
        while (path.size() < length) {
            path += L"\\a folder with quite a long name, number " + std::to_wstring(path.size());
            if (!CreateDirectoryW(common::LongPath(path).c_str(), nullptr)) {
                throw std::runtime_error("a long folder cannot be made");
            }
            m_folders.push_back(path);
        }
    }
    ~LongFolder() {
        for (const std::wstring& file : m_files) {
            DeleteFileW(common::LongPath(file).c_str());
        }
        for (auto folder = m_folders.rbegin(); folder != m_folders.rend(); ++folder) {
            RemoveDirectoryW(common::LongPath(*folder).c_str());
        }
    }
    LongFolder(const LongFolder&) = delete;
    LongFolder& operator=(const LongFolder&) = delete;

    std::wstring operator/(const std::wstring& name) {
        m_files.push_back(m_folders.back() + L"\\" + name);
        return m_files.back();
    }

private:
    const TempFolder m_root;
    std::vector<std::wstring> m_folders;
    std::vector<std::wstring> m_files;
};

} // namespace mxovshare
