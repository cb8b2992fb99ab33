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
    bool createsSection = false; ///< the section was free; it gets another number when it is not any more
};

/// What became of an edit.
struct IniOutcome {
    /// Why the file on the disk does not hold all edits made so far; ERROR_SUCCESS when it does.
    DWORD error = ERROR_SUCCESS;
    /// The edit was dropped, because nobody knows what the file holds.
    bool refused = false;
    /// The first edit that was refused since the file was last read.
    bool firstRefused = false;
};

/// The document of a file and what is known about the file on the disk. Before each use the file's stamp is
/// compared, except within a burst of calls. An edit is written at once, and nobody else's edit is
/// overwritten with it: from reading to replacing, this process owns the temporary file of AtomicFile.
///
/// A locked file is waited for. When it stays locked, the last document that was read remains, with the edits
/// made since: they are kept and written with the next edit, or by SaveKept. When the file disappears, kept
/// edits are dropped. A section that takes the next free number gets the next one after that when somebody
/// else took the number first. A file that was never read takes no edits, and neither does one whose last
/// answers were given without having read it: callers base edits on answers, such as the next free number.
class CachedIniFile {
public:
    /// `path` is a full one. The file need not exist. `patience`: milliseconds to wait for a locked file.
    CachedIniFile(std::wstring path, const TextPlatform& platform, DWORD patience);

    const std::wstring& Path() const { return m_path; }

    /// The document as it is now, or as it was when the file could last be read; empty for a file that is
    /// missing or was never read.
    const IniDocument& Document();

    /// Lists sections like IniDocument.
    std::vector<std::u16string> SectionNames(std::u16string_view prefix);

    /// The highest number like IniDocument. The caller may go on to write the section of the next number:
    /// until sections are listed or a number is asked again, edits of it go to whatever number it got.
    int LastIndex(std::u16string_view prefix);

    /// Changes the document and replaces the file once.
    IniOutcome Apply(std::span<const IniEdit> edits);

    bool HasKept() const { return !m_kept.empty(); }

    /// Writes kept edits without waiting for a lock.
    void SaveKept();

    /// Makes the next call compare the stamp even within a burst.
    void LookAgain() { m_lastLook = kNever; }

private:
    static constexpr std::uint64_t kNever = 0;

    bool IsBurst(std::uint64_t now) const;
    bool MayHideChanges(std::uint64_t now) const;
    void Look(std::uint64_t now, DWORD patience);
    void Load(std::uint64_t now, DWORD patience);
    void RememberStamp(const FileStamp& stamp, std::uint64_t now);
    IniOutcome Refuse(std::span<const IniEdit> edits);
    IniEdit Numbered(IniEdit edit);
    std::u16string FreeSection(const IniDocument& document, std::u16string_view prefix) const;
    void MoveKept(const IniDocument& document, std::u16string section);
    void Keep(std::span<const IniEdit> edits);
    void DropOverwritten();
    void DropKept();
    void PerformKept(IniDocument& document);
    DWORD Save(DWORD patience);
    DWORD Replace(DWORD patience);

    std::wstring m_path;
    const TextPlatform& m_platform;
    DWORD m_patience;
    std::unique_ptr<IniDocument> m_document; // none before the first reading and after a failure half-way
    const IniDocument m_unread;
    bool m_answeredUnread = false; // the last answers came from m_unread
    bool m_refusalReported = false;
    bool m_current = false;            // m_document is what the file holds, and the kept edits
    bool m_waitedInVain = false;       // for the file to be readable; not repeated until it is
    DWORD m_readError = ERROR_SUCCESS; // of the last reading that failed
    DWORD m_saveError = ERROR_SUCCESS;
    FileStamp m_stamp;
    bool m_stampReliable = false;     // a change of the file cannot leave its stamp as it is any more
    std::vector<IniEdit> m_kept;      // edits that are not in the file
    std::size_t m_performed = 0;      // how many of them are in the document
    bool m_changed = false;           // the document differs from the file
    std::u16string m_numberPrefix;    // of the number that LastIndex returned; empty when none is open
    std::u16string m_nextSection;     // the section of the next number
    std::u16string m_takenSection;    // the section that its edits go to; empty before the first
    std::uint64_t m_lastUse = kNever; // these in microseconds
    std::uint64_t m_lastLook = kNever;
    std::uint64_t m_lastLoad = kNever;
    std::uint64_t m_stampSeen = kNever;
};

} // namespace mxovshare
