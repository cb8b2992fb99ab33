// What a folder holds, entry by entry.
#pragma once

#include "common/Handles.h"

#include <string>

#include <windows.h>

namespace mxovshare {

/// Goes through the entries of a folder without "." and "..". Throws FileFailure when it cannot be listed.
class FolderSearch {
public:
    explicit FolderSearch(const std::wstring& folder);

    explicit operator bool() const { return m_found; }
    const WIN32_FIND_DATAW& operator*() const { return m_data; }
    const WIN32_FIND_DATAW* operator->() const { return &m_data; }
    void Next();

private:
    void Check(bool found);

    std::wstring m_folder;
    WIN32_FIND_DATAW m_data = {};
    common::UniqueSearch m_search;
    bool m_found = false;
};

} // namespace mxovshare
