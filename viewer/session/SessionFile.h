// The file beside an unpacked package that names its package file.
#pragma once

#include "common/Handles.h"

#include <string>

namespace viewer {

/// An INI file, held open while its session lives: other programs can read it but not open it for writing.
class SessionFile {
public:
    static constexpr wchar_t kExtension[] = L".session";

    struct Content {
        std::wstring packageFile;
        std::wstring stamp;      ///< of the package file when the folder agreed with it
        bool isUnpacked = false; ///< completely
    };

    /// Creates the file of a session that unpacks into `folder`. Empty on failure, with the last error set.
    [[nodiscard]] static SessionFile Create(const std::wstring& folder, const std::wstring& packageFile);

    /// Takes over the file at a path. Empty when another viewer holds it.
    [[nodiscard]] static SessionFile Open(const std::wstring& path);

    SessionFile() = default;
    explicit operator bool() const { return m_file != nullptr; }

    [[nodiscard]] Content Read() const;

    /// Notes that the package is unpacked completely, and its stamp.
    void WriteUnpacked(const std::wstring& packageFile, const std::wstring& stamp);

    /// Closes and deletes the file.
    void Remove();

private:
    SessionFile(std::wstring path, common::UniqueHandle file)
        : m_path(std::move(path)), m_file(std::move(file)) {}
    bool Write(const std::wstring& text);

    std::wstring m_path;
    common::UniqueHandle m_file;
};

} // namespace viewer
