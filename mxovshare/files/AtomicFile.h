// Replacing a file in one step.
#pragma once

#include "LockPatience.h"

#include "common/Handles.h"

#include <cstddef>
#include <functional>
#include <string>
#include <thread>

namespace mxovshare {

/// A new content for a file. It is written into a temporary file beside the target, which Commit puts in the
/// target's place; until then, and whenever something fails, the target stays what it was. The temporary file
/// has a name of its own for each target and one owner at a time, in any process: from its creation to the
/// commit nobody else replaces the target through this class, so what is read meanwhile is what is replaced.
/// One that a crash left behind is written over by the next owner. Throws only std::bad_alloc.
class AtomicFile {
public:
    /// Creates the temporary file, waiting up to `patience` milliseconds for another owner. `target` may have
    /// any length; its folder must exist. Error reports a failure.
    explicit AtomicFile(const std::wstring& target, DWORD patience = kLockPatience);
    /// Removes the temporary file unless it was committed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends bytes at the handle's position. After a failure every further call fails.
    [[nodiscard]] bool Write(const void* data, std::size_t size);

    /// The open temporary file, for seeking, reading back and writing in place; closed by Commit.
    HANDLE Handle() const { return m_file.get(); }

    /// Flushes what was written so far on a background thread, to shorten Commit. Commit fails if this flush
    /// failed, since the system may report the error only once.
    void FlushMeanwhile();

    /// Flushes, replaces the target and closes, waiting while the target is in use. A read-only target is
    /// left as it is and fails; otherwise its attributes are kept. False leaves the target unchanged and
    /// removes the temporary file. `beforeReplace`, if given, is called immediately before each attempt to
    /// replace the target and may throw to abandon it.
    [[nodiscard]] bool Commit(const std::function<void()>& beforeReplace = {});

    /// The system's code for the first failure; ERROR_SUCCESS without one.
    DWORD Error() const { return m_error; }

    /// Where the temporary file of a target lies.
    static std::wstring TemporaryPath(const std::wstring& target);

private:
    static const DWORD kUnknownFailure;

    bool Fail(DWORD error);
    bool Create();
    bool Flush();
    bool EndFlush();
    bool KeepAttributes();
    bool Replace(const std::function<void()>& beforeReplace);
    void Discard();

    std::wstring m_target;
    std::wstring m_temporary;
    DWORD m_patience;
    common::UniqueHandle m_file;
    std::thread m_flushing;             // ends before the handle is closed
    DWORD m_flushError = ERROR_SUCCESS; // of that thread, once it has ended
    DWORD m_error = ERROR_SUCCESS;
    bool m_exists = false; // the temporary file is ours to remove
};

} // namespace mxovshare
