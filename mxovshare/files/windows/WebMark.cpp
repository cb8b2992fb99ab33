#include "files/WebMark.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/Paths.h"
#include "files/FileFailure.h"

namespace mxovshare {

namespace {

constexpr std::wstring_view kStream = L":Zone.Identifier";
constexpr DWORD kShareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kLongestMark = 4096; // bytes; the system writes some hundred

std::wstring StreamOf(const std::wstring& file) {
    return common::LongPath(file) + std::wstring(kStream);
}

// Empty for a file without a mark.
std::string ReadMark(const std::wstring& file) {
    const common::UniqueHandle stream = common::OwnFile(
        CreateFileW(StreamOf(file).c_str(), GENERIC_READ, kShareWithAll, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!stream) {
        return {};
    }
    std::string bytes(kLongestMark, '\0');
    DWORD count = 0;
    if (!ReadFile(stream.get(), bytes.data(), kLongestMark, &count, nullptr)) {
        ThrowFileFailure(L"cannot read the mark of the web of", file, GetLastError());
    }
    bytes.resize(count);
    return bytes;
}

} // namespace

bool HasStreams(const std::wstring& path) {
    const common::UniqueHandle file =
        common::OwnFile(CreateFileW(common::LongPath(path).c_str(), FILE_READ_ATTRIBUTES, kShareWithAll,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    DWORD flags = 0;
    return file &&
           GetVolumeInformationByHandleW(file.get(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) &&
           (flags & FILE_NAMED_STREAMS) != 0;
}

bool IsWebMark(std::wstring_view name) noexcept {
    return name.size() > kStream.size() &&
           common::IsSamePath(name.substr(name.size() - kStream.size()), kStream);
}

WebMark::WebMark(const std::wstring& file, StreamProbe hasStreams) : m_hasStreams(hasStreams) {
    if (m_hasStreams(file)) {
        m_bytes = ReadMark(file);
    }
}

void WebMark::CopyTo(const std::wstring& file) const {
    if (m_bytes.empty() || !m_hasStreams(file)) {
        return;
    }
    const common::UniqueHandle stream = common::OwnFile(CreateFileW(
        StreamOf(file).c_str(), GENERIC_WRITE, kShareWithAll, nullptr, CREATE_ALWAYS, 0, nullptr));
    const auto size = static_cast<DWORD>(m_bytes.size());
    DWORD written = 0;
    if (!stream || !WriteFile(stream.get(), m_bytes.data(), size, &written, nullptr) || written != size) {
        ThrowFileFailure(L"cannot write the mark of the web of", file, GetLastError());
    }
}

} // namespace mxovshare
