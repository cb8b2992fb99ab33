#include "versions/WorkFolder.h"

#include "common/Paths.h"
#include "package/Paths.h"

namespace viewer {

namespace {

constexpr wchar_t kExtension[] = L".work";
constexpr wchar_t kInUse[] = L"\\in-use";
constexpr int kMostFolders = 1000;

common::UniqueHandle HoldNew(const std::wstring& file) {
    return common::OwnFile(CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
}

bool IsInUse(const std::wstring& folder) {
    return !DeleteFileW((folder + kInUse).c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND;
}

} // namespace

WorkFolder::WorkFolder(const std::wstring& store) {
    MakeFolders(store);
    const std::wstring name = store + L"\\" + std::to_wstring(GetCurrentProcessId()) + L"-";
    for (int number = 1; number <= kMostFolders && !m_inUse; ++number) {
        m_path = name + std::to_wstring(number) + kExtension;
        // Another viewer may remove it before the file is in it.
        if (CreateDirectoryW(m_path.c_str(), nullptr)) {
            m_inUse = HoldNew(m_path + kInUse);
        }
    }
    if (!m_inUse) {
        m_path.clear();
    }
}

WorkFolder::~WorkFolder() {
    m_inUse.reset();
    if (!m_path.empty()) {
        RemoveFolder(m_path);
    }
}

bool WorkFolder::IsIn(const std::wstring& store, const std::wstring& file) {
    const std::wstring folder = ParentFolder(file);
    return folder.ends_with(kExtension) && common::IsSamePath(ParentFolder(folder), store);
}

void WorkFolder::RemoveLeftovers(const std::wstring& store) {
    for (const FolderEntry& entry : EntriesOf(store)) {
        const std::wstring path = store + L"\\" + entry.name;
        if (entry.isFolder && entry.name.ends_with(kExtension) && !IsInUse(path)) {
            RemoveFolder(path);
        }
    }
}

} // namespace viewer
