// One INI file kept in memory as long as nobody changes it.
#pragma once

#include "files/FileStamp.h"
#include "ini/IniDocument.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace mxovshare {

/// A change of a document: sets a key, or removes a section when `key` is empty.
struct IniEdit {
    std::u16string section;
    std::u16string key;
    std::u16string value;
};

/// The document of a file and what is known about the file on the disk. Before each use the file is asked
/// whether it is still the one that was read, except within a burst of calls. Changes are written at once;
/// one that cannot be written stays in force here and goes out with the next that can. When the file
/// disappears, such changes go with it.
class CachedIniFile {
public:
    /// `path` is a full one. The file need not exist.
    CachedIniFile(std::wstring path, const TextPlatform& platform);

    const std::wstring& Path() const { return m_path; }

    /// The document as it is now; empty for a file that is missing or cannot be read.
    const IniDocument& Document();

    /// Changes the document and writes the file once. Gives whether the file on the disk was replaced.
    bool Apply(std::span<const IniEdit> edits);

    bool HasUnsaved() const { return !m_unsaved.empty(); }

    /// The system's code for why the changes could not be written last time; meaningless without unsaved
    /// ones.
    DWORD SaveError() const { return m_saveError; }

    /// Makes the next call look at the file even within a burst.
    void LookAgain() { m_lastLook = kNever; }

private:
    static constexpr std::uint64_t kNever = 0;

    void ForgetOverwritten();
    bool IsBurst(std::uint64_t now) const;
    bool MayHideChanges(std::uint64_t now) const;
    void Look(std::uint64_t now);
    void Load(std::uint64_t now);
    void Settle(const FileStamp& stamp, std::uint64_t now);
    bool Save();

    std::wstring m_path;
    const TextPlatform& m_platform;
    std::unique_ptr<IniDocument> m_document; // none before the first load and after a failure half-way
    bool m_readable = false;
    FileStamp m_stamp;
    bool m_settled = false;         // a change of the file cannot leave its stamp as it is any more
    std::vector<IniEdit> m_unsaved; // in force in the document, not yet in the file
    DWORD m_saveError = ERROR_SUCCESS;
    std::uint64_t m_lastUse = kNever; // these in microseconds
    std::uint64_t m_lastLook = kNever;
    std::uint64_t m_lastLoad = kNever;
    std::uint64_t m_stampSeen = kNever;
};

} // namespace mxovshare
