#include "pack/BackgroundFlusher.h"

#include "files/FileFailure.h"

#include <system_error>

namespace mxovshare {

namespace {

constexpr std::uint64_t kAmount = std::uint64_t{8} << 20;

} // namespace

BackgroundFlusher::BackgroundFlusher(ByteSink& sink, HANDLE file, std::wstring path)
    : m_sink(sink), m_file(file), m_path(std::move(path)) {
    try {
        m_thread = std::thread([this] { Work(); });
    } catch (const std::system_error&) {
        // The flush at the end does it all.
    }
}

BackgroundFlusher::~BackgroundFlusher() {
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_change.notify_all();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void BackgroundFlusher::Write(std::uint64_t offset, Bytes data) {
    m_sink.Write(offset, data);
    const std::uint64_t before = m_written.fetch_add(data.size());
    if (before / kAmount != (before + data.size()) / kAmount) {
        Ask();
    }
}

void BackgroundFlusher::SetSize(std::uint64_t size) {
    m_sink.SetSize(size);
    Ask();
}

void BackgroundFlusher::Finish() {
    std::unique_lock lock(m_mutex);
    m_change.wait(lock, [this] { return m_asked == 0; });
    if (m_error != ERROR_SUCCESS) {
        ThrowFileFailure(L"cannot write", m_path, m_error);
    }
}

void BackgroundFlusher::Ask() {
    if (!m_thread.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        ++m_asked;
    }
    m_change.notify_all();
}

void BackgroundFlusher::Work() noexcept {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_change.wait(lock, [this] { return m_stop || m_asked > 0; });
        if (m_stop) {
            return;
        }
        const int asked = m_asked;
        lock.unlock();
        const DWORD error = FlushFileBuffers(m_file) ? ERROR_SUCCESS : GetLastError();
        lock.lock();
        if (m_error == ERROR_SUCCESS) {
            m_error = error;
        }
        m_asked -= asked;
        m_change.notify_all();
    }
}

} // namespace mxovshare
