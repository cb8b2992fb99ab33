#include "files/AtomicFile.h"

#include "common/SystemError.h"

#include <system_error>

namespace mxovshare {

AtomicFile::~AtomicFile() {
    EndFlush();
    Discard();
}

void AtomicFile::FlushMeanwhile() {
    EndFlush();
    try {
        m_flushing = std::thread([this] { m_flushError = Flush() ? ERROR_SUCCESS : common::LastError(); });
    } catch (const std::system_error&) {
        // Commit flushes all of it.
    }
}

bool AtomicFile::EndFlush() {
    if (m_flushing.joinable()) {
        m_flushing.join();
    }
    return m_flushError == ERROR_SUCCESS || Fail(m_flushError);
}

bool AtomicFile::Commit(const std::function<void()>& beforeReplace) {
    bool done = EndFlush() && m_error == ERROR_SUCCESS;
    if (done) {
        done = Flush() && KeepAttributes() && Replace(beforeReplace);
        if (!done) {
            Fail(common::LastError());
        }
    }
    Discard();
    return done;
}

bool AtomicFile::Fail(DWORD error) {
    if (m_error == ERROR_SUCCESS) {
        m_error = error == ERROR_SUCCESS ? kUnknownFailure : error;
    }
    return false;
}

} // namespace mxovshare
