// Making a package file out of a folder.
#pragma once

#include "files/AtomicFile.h"
#include "files/ByteSource.h"
#include "mxovpackage.h"
#include "pack/FolderScan.h"

#include <functional>
#include <string>
#include <vector>

namespace mxovshare {

/// A file of the folder that is packed with the content of another one.
struct Substitute {
    std::wstring path; ///< the file that is replaced
    std::wstring
        content; ///< the file that is read, open for writing here alone; itself left out of the package
    std::uint64_t size = 0;
    FILETIME modified = {};
};

/// A package packed beside the file that it replaces. Until Commit, and when anything fails, the old file
/// stays as it is; the destructor leaves nothing behind. Members throw FileFailure, PackageError or
/// Cancelled.
class NewPackage {
public:
    /// Creates the temporary file beside `file`, or beside the file that it links to.
    explicit NewPackage(const std::wstring& file);

    /// Packs everything below `folder` on all processors, then reads back and verifies what was written.
    /// Packed data that the old package already holds for a file (same name, size, last-write time and
    /// checksum) is copied. Starts again when another program changes a file meanwhile; FileChanged when that
    /// never ends.
    void Pack(const std::wstring& folder, PackageProgress* progress, const Substitute* substitute = nullptr);

    /// Packs `items` in the order given, then verifies as Pack does. Those with an entry of `old` in `reuse`
    /// and without a path are copied from there as they are. Fails when an entry of `old` is damaged.
    void Pack(const std::vector<FolderItem>& items, const ByteSource& old,
              const std::vector<const ZipEntry*>& reuse, PackageProgress* progress);

    /// Copies owner, access rights and alternate streams of the old file. Returns what is lost when it is
    /// replaced, in words such as "its owner"; empty when nothing is.
    std::wstring KeepProperties();
    /// The same; reports a loss to `progress`, if any, and throws Cancelled when it declines.
    void KeepProperties(PackageProgress* progress);

    /// Replaces the file in one step. `beforeReplace`, if given, is called immediately before each attempt
    /// and may throw to abandon it.
    void Commit(const std::function<void()>& beforeReplace = {});

private:
    std::wstring m_file;
    AtomicFile m_target;
};

} // namespace mxovshare
