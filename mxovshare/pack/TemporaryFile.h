// Content that is packed from a file although no file holds it.
#pragma once

#include "common/Handles.h"
#include "files/DiskFile.h"

#include <optional>
#include <string>

namespace mxovshare {

/// An empty file in the user's temporary folder, deleted at the end or when the process ends. Throws
/// FileFailure when it cannot be created.
class TemporaryFile {
public:
    TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::wstring& Path() const { return m_path; }
    std::uint64_t Size() const { return m_file->Size(); }
    void Append(Bytes bytes) { m_file->Write(m_file->Size(), bytes); }

private:
    std::wstring m_path;
    common::UniqueHandle m_handle;
    std::optional<OpenFile> m_file;
};

} // namespace mxovshare
