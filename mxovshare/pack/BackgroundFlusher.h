// Writing a large file so that little is left to be flushed at its end.
#pragma once

#include "files/ByteSource.h"

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace mxovshare {

/// Passes on what is written to an open file and meanwhile flushes it on a thread of its own: each time some
/// megabytes are written, and when the size is set. It does not replace the flush at the end. Writing is for
/// any thread.
class BackgroundFlusher : public ByteSink {
public:
    /// `path` names the file in failures.
    BackgroundFlusher(ByteSink& sink, HANDLE file, std::wstring path);
    ~BackgroundFlusher() override;
    BackgroundFlusher(const BackgroundFlusher&) = delete;
    BackgroundFlusher& operator=(const BackgroundFlusher&) = delete;

    void Write(std::uint64_t offset, Bytes data) override;
    void SetSize(std::uint64_t size) override;

    /// Waits for the flushes under way. Throws FileFailure when one failed: the system reports a failure to
    /// write only once, so a later flush can succeed although something is lost.
    void Finish();

private:
    void Ask();
    void Work() noexcept;

    ByteSink& m_sink;
    HANDLE m_file;
    std::wstring m_path;
    std::atomic<std::uint64_t> m_written = 0;
    std::mutex m_mutex; // of everything below but the thread
    std::condition_variable m_change;
    int m_asked = 0; // flushes that are still to be done
    bool m_stop = false;
    DWORD m_error = ERROR_SUCCESS;
    std::thread m_thread;
};

} // namespace mxovshare
