// Replacing a file in one step.
#pragma once

#include "FileHandle.h"

#include <windows.h>

#include <cstddef>
#include <string>

namespace mxovshare {

/// A new content for a file. It is written into a temporary file beside the target, which Commit puts in the
/// target's place; until then, and whenever something fails, the target stays what it was. The temporary file
/// has a name of its own for each target: one that a crash left behind is written over by the next attempt,
/// and two writers of one target never mix. Nothing throws but for want of memory.
class AtomicFile {
public:
    /// Creates the temporary file. `target` may have any length; its folder must exist. Error tells a
    /// failure.
    explicit AtomicFile(const std::wstring& target);
    /// Removes the temporary file unless it was committed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends bytes at the handle's position. After a failure every further call fails.
    [[nodiscard]] bool Write(const void* data, std::size_t size);

    /// The open temporary file, for seeking, reading back and writing in place; closed by Commit.
    HANDLE Handle() const { return m_file.Get(); }

    /// Flushes, closes and replaces the target, retrying briefly while it is in use. A read-only target is
    /// left as it is and fails; otherwise its attributes are kept. False leaves the target unchanged and
    /// removes the temporary file.
    [[nodiscard]] bool Commit();

    /// The system's code for the first failure; ERROR_SUCCESS without one.
    DWORD Error() const { return m_error; }

    /// Where the temporary file of a target lies.
    static std::wstring TemporaryPath(const std::wstring& target);

private:
    bool Fail(DWORD error);
    bool Create();
    bool KeepAttributes();
    bool Replace();
    void Discard();

    std::wstring m_target;
    std::wstring m_temporary;
    FileHandle m_file;
    DWORD m_error = ERROR_SUCCESS;
    bool m_exists = false; // the temporary file is ours to remove
};

} // namespace mxovshare
