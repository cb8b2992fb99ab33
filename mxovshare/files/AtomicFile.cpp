#include "files/AtomicFile.h"

#include "common/SystemError.h"

namespace mxovshare {

AtomicFile::~AtomicFile() {
    Discard();
}

bool AtomicFile::Commit(const std::function<void()>& beforeReplace) {
    bool done = m_error == ERROR_SUCCESS;
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
