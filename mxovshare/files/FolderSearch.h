// What a folder holds, entry by entry.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

namespace mxovshare {

/// A file or folder in a folder.
struct FolderEntry {
    std::wstring name;
    bool isFolder = false;
    bool isLink = false;         ///< leads to another place
    bool isRedirected = false;   ///< a link, or a driver decides where its content is
    std::uint8_t attributes = 0; ///< those of DOS
    std::uint64_t size = 0;      ///< bytes
    FILETIME written = {};       ///< UTC
};

/// Goes through the entries of a folder without "." and "..". Throws FileFailure when it cannot be listed.
class FolderSearch {
public:
    explicit FolderSearch(const std::wstring& folder);
    ~FolderSearch();
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;

    explicit operator bool() const { return m_found; }
    const FolderEntry& operator*() const { return m_entry; }
    const FolderEntry* operator->() const { return &m_entry; }
    void Next();

private:
    struct Search; // of the system

    void Take(bool found);

    std::wstring m_folder;
    std::unique_ptr<Search> m_search;
    FolderEntry m_entry;
    bool m_found = false;
};

} // namespace mxovshare
