// The mark of the web: the alternate stream beside a file's content in which the system keeps where the file
// came from.
#pragma once

#include <string>
#include <string_view>

namespace mxovshare {

/// Whether the file system of an existing file or folder has alternate streams.
[[nodiscard]] bool HasStreams(const std::wstring& path);

/// Whether a file in a listing is the mark of another one. Only file systems without streams list marks.
[[nodiscard]] bool IsWebMark(std::wstring_view name) noexcept;

/// The mark of one file, for the files that are made from it.
class WebMark {
public:
    using StreamProbe = bool (*)(const std::wstring& path);

    /// Reads the mark of `file`; there is none where `hasStreams` finds no streams.
    explicit WebMark(const std::wstring& file, StreamProbe hasStreams = HasStreams);

    /// Marks an existing file in the same way, where there is a mark and the file system has streams. Throws
    /// FileFailure. Changes the time of the last write.
    void CopyTo(const std::wstring& file) const;

private:
    StreamProbe m_hasStreams;
    std::string m_bytes; // empty for no mark
};

} // namespace mxovshare
