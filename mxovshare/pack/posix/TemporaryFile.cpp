#include "pack/TemporaryFile.h"

#include "common/SystemError.h"
#include "common/Utf8.h"
#include "files/FileFailure.h"

#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace mxovshare {

namespace {

std::string TemporaryFolder() {
    const char* folder = std::getenv("TMPDIR");
    return folder != nullptr && *folder != '\0' ? folder : "/tmp";
}

} // namespace

// The name goes at once, and the file with the last descriptor of it.
TemporaryFile::TemporaryFile() {
    std::string path = TemporaryFolder() + "/mxoXXXXXX";
    m_handle = common::UniqueHandle(mkostemp(path.data(), O_CLOEXEC));
    if (!m_handle) {
        ThrowFileFailure(L"cannot create a temporary file in", common::FromNameBytes(TemporaryFolder()),
                         common::LastError());
    }
    unlink(path.c_str());
    m_path = L"/proc/self/fd/" + std::to_wstring(m_handle.get());
    m_file.emplace(m_handle.get(), m_path);
}

} // namespace mxovshare
