#include "start/PackagePicture.h"

#include "common/Paths.h"
#include "document/PictureFile.h"
#include "mxovchange.h"

#include <algorithm>
#include <vector>

namespace viewer {

namespace {

using mxovshare::PackageEntry;

constexpr std::uint64_t kMostPictureBytes = 16 << 20;

// As the information file names it; empty when it names none.
std::wstring NamedPicture(const mxovshare::Information& information) {
    std::wstring name = information.Value(L"FILEINFO", L"Thumbnail");
    std::ranges::replace(name, L'/', L'\\');
    return name;
}

} // namespace

common::UniqueBitmap ReadPackagePicture(const std::wstring& packageFile) {
    std::vector<PackageEntry> entries;
    mxovshare::Information information;
    if (!mxovshare::ReadContent(packageFile, entries, information).ok) {
        return {};
    }
    const auto entry =
        std::ranges::find_if(entries, [name = NamedPicture(information)](const PackageEntry& candidate) {
            return !candidate.isFolder && common::IsSamePath(candidate.name, name);
        });
    common::UniqueBitmap picture;
    if (entry != entries.end()) {
        const auto decode = [&picture](const std::wstring&, std::string bytes) {
            picture = DecodePicture(std::move(bytes));
        };
        if (!mxovshare::ReadContentFiles(packageFile, {entry->name}, kMostPictureBytes, decode).ok) {
            return {};
        }
    }
    return picture;
}

} // namespace viewer
