#include "mxovpackage.h"

#include "files/DiskFile.h"
#include "files/WebMark.h"
#include "pack/NewPackage.h"
#include "pack/PackageContent.h"
#include "pack/Unpack.h"
#include "package/PackageErrors.h"
#include "package/PackageStamp.h"
#include "package/PackedFiles.h"
#include "package/UnpackedFolders.h"

namespace mxovshare {

PackageResult CreatePackage(const std::wstring& folder, const std::wstring& file,
                            PackageProgress* progress) noexcept {
    return RunForResult(file, [&] {
        NewPackage package(file);
        package.Pack(folder, progress);
        package.KeepProperties(progress);
        package.Commit();
    });
}

PackageResult ListPackage(const std::wstring& file, std::vector<PackageEntry>& entries) noexcept {
    return RunForResult(file, [&] {
        entries.clear();
        for (const ZipEntry& entry : ReadZipDirectory(DiskSource(file))) {
            entries.push_back(Describe(entry));
        }
    });
}

PackageResult UnpackPackage(const std::wstring& file, const std::wstring& folder,
                            PackageProgress* progress) noexcept {
    return RunForResult(file, [&] {
        const std::wstring stamp = StampOfPackage(file);
        UnpackInto(file, folder, progress, [&] { RecordFolder(folder, file, stamp); });
    });
}

PackageResult CopyWebMark(const std::wstring& from, const std::wstring& to) noexcept {
    return RunForResult(to, [&] { WebMark(from).CopyTo(to); });
}

PackageResult VerifyPackage(const std::wstring& file, PackageProgress* progress) noexcept {
    return RunForResult(file, [&] {
        const DiskSource source(file);
        const std::vector<ZipEntry> entries = ReadZipDirectory(source);
        ProgressMeter meter(progress, TotalSize(entries));
        CheckEntries(source, entries, meter);
    });
}

} // namespace mxovshare
