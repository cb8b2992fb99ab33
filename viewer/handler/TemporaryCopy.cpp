#include "handler/TemporaryCopy.h"

#include "common/LongPath.h"
#include "package/Paths.h"

#include <windows.h>

#include <objbase.h>

namespace viewer {

namespace {

// A name that no folder has.
std::wstring UniqueName() {
    GUID number = {};
    wchar_t text[40] = L"";
    return SUCCEEDED(CoCreateGuid(&number)) && StringFromGUID2(number, text, ARRAYSIZE(text))
               ? L"MXOV" + std::wstring(text)
               : std::wstring();
}

} // namespace

TemporaryCopy& TemporaryCopy::operator=(TemporaryCopy&& other) noexcept {
    std::swap(m_folder, other.m_folder);
    std::swap(m_path, other.m_path);
    return *this;
}

bool TemporaryCopy::Make(const std::wstring& file) {
    Remove();
    wchar_t folder[MAX_PATH + 1] = L"";
    const std::wstring name = UniqueName();
    if (name.empty() || !GetTempPathW(ARRAYSIZE(folder), folder)) {
        return false;
    }
    m_folder = folder + name;
    m_path = m_folder + L"\\" + FileName(file);
    return CreateDirectoryW(m_folder.c_str(), nullptr) &&
           CopyFileW(common::LongPath(file).c_str(), common::LongPath(m_path).c_str(), TRUE);
}

void TemporaryCopy::Remove() noexcept {
    if (!m_folder.empty()) {
        SetFileAttributesW(m_path.c_str(), FILE_ATTRIBUTE_NORMAL); // a copy of a read-only file is read-only
        DeleteFileW(m_path.c_str());
        RemoveDirectoryW(m_folder.c_str());
    }
}

} // namespace viewer
