// The folder of its own into which one opened package is unpacked.
#pragma once

#include "session/FolderComparison.h"
#include "session/SessionFile.h"

#include <string>
#include <vector>

namespace viewer {

class SessionStore;

/// Owns one folder of the store and has it removed at the end. A session file beside the folder, held open
/// while the session lives, names the package. A folder whose session file is not held is left from a crash
/// and may hold unsaved changes; a folder without a session file is no longer needed.
class PackageSession {
public:
    ~PackageSession();
    PackageSession(const PackageSession&) = delete;
    PackageSession& operator=(const PackageSession&) = delete;

    /// Where the package is unpacked, without a separator at the end.
    [[nodiscard]] const std::wstring& Folder() const { return m_folder; }

    /// The same, ending with a separator.
    [[nodiscard]] std::wstring FolderWithSeparator() const { return m_folder + L"\\"; }

    /// Full path of the package file.
    [[nodiscard]] const std::wstring& PackageFile() const { return m_packageFile; }

    /// The package file's stamp when folder and package file last agreed, as passed to `Record`; empty
    /// before.
    [[nodiscard]] const std::wstring& Stamp() const { return m_stamp; }

    /// Records that the folder agrees with the package file of this stamp. Called after unpacking and after
    /// each save.
    void Record(const std::wstring& stamp);

    /// Continues with another package file, to which the library has just saved the folder.
    void MoveTo(const std::wstring& packageFile);

    /// Records what the library last saved or unpacked. True when it was not recorded yet.
    bool RecordSave();

    /// Continues with a session that was taken over: saving asks before it replaces a package file of another
    /// stamp.
    void Resume();

    /// The package's entries when the folder last agreed with it; empty before, and when the package file
    /// could not be read.
    [[nodiscard]] const std::vector<mxovshare::PackageEntry>& Entries() const { return m_entries; }

    /// Counts a file of the folder, relative to it, as unchanged from now on. Called when the viewer itself
    /// has changed, added or removed it; the control then counts as changed.
    void Accept(const std::wstring& name);

    /// The same for all files of the folder, and for those that are gone from it.
    void AcceptAll() { mxovshare::ListFolder(m_folder, m_entries); }

    /// How the files of the folder differ from those entries.
    [[nodiscard]] std::vector<FileChange> Changes() const { return FindChanges(m_folder, m_entries); }

    /// Keeps folder and session file for the next start of the viewer.
    void Keep() { m_keep = true; }

private:
    friend class SessionStore;
    PackageSession(SessionStore& store, std::wstring packageFile, std::wstring folder, SessionFile file);

    SessionStore& m_store;
    std::wstring m_packageFile;
    std::wstring m_folder;
    SessionFile m_file;
    std::wstring m_stamp;
    std::vector<mxovshare::PackageEntry> m_entries; // of the package file with that stamp
    bool m_keep = false;
};

} // namespace viewer
