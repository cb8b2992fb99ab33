// The history entry that a save adds to the information file.
#pragma once

#include "files/AtomicFile.h"
#include "ini/IniStore.h"
#include "pack/NewPackage.h"

#include <optional>
#include <string>

namespace mxovshare {

/// The information file of a package folder with one more history entry, written beside the file that it
/// replaces on Commit. A save that fails leaves no entry. Throws FileFailure.
class NewInformation {
public:
    /// Finds the information file of `folder` and writes the new one, with an entry for `operation`, now,
    /// this user and these remarks.
    NewInformation(const std::wstring& folder, const std::wstring& operation, const std::wstring& remarks);

    /// What is packed in place of the old information file.
    Substitute ForPackage() const;

    /// Replaces the information file. If that fails, the entry is written as a change of its own, with the
    /// next number then free, and kept in memory while that fails too.
    void Commit() noexcept;

private:
    std::string Extended();
    void WriteEntry();

    std::wstring m_path;
    IniValues m_values;
    std::optional<AtomicFile> m_file;
    std::uint64_t m_size = 0;
    FILETIME m_modified = {};
};

} // namespace mxovshare
