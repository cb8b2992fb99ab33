#include "versions/RestoreVersion.h"

#include "common/LongPath.h"
#include "common/Policies.h"
#include "common/SystemError.h"
#include "package/Paths.h"
#include "package/ProgramsText.h"
#include "texts/Texts.h"
#include "versions/StoredFiles.h"
#include "versions/StoreResult.h"
#include "versions/VersionFolder.h"

namespace viewer {

namespace {

using mxovshare::PackageResult;
using FilesByContents = std::map<std::wstring, std::vector<const KeptFile*>>;

PackageResult RefusePrograms(const std::vector<KeptFile>& files) {
    std::vector<mxovshare::PackageEntry> entries;
    for (const KeptFile& file : files) {
        entries.emplace_back().name = file.name;
    }
    const std::wstring programs = ProgramsText(entries);
    return programs.empty() || !common::IsRefusingPrograms()
               ? Succeeded()
               : FailedBecause(Text(IDS_PROGRAMS_REFUSED, {programs}));
}

// What stands beside the target while it is filled; removed at the end.
class Unpacked {
public:
    explicit Unpacked(const std::wstring& target)
        : m_folder(target + L".part"), m_package(target + L".new") {}
    ~Unpacked() {
        RemoveFolder(m_folder);
        DeleteFileW(m_package.c_str());
    }
    Unpacked(const Unpacked&) = delete;
    Unpacked& operator=(const Unpacked&) = delete;

    // Unpacks what is left of a package after the changes, with its mark of the web.
    [[nodiscard]] PackageResult Unpack(const std::wstring& contents, const mxovshare::PackageChanges& changes,
                                       mxovshare::PackageProgress* progress) const {
        if (changes.removed.empty()) {
            return mxovshare::UnpackPackage(contents, m_folder, progress);
        }
        PackageResult result = mxovshare::ChangePackage(contents, m_package, changes, progress);
        if (result.ok) {
            result = mxovshare::CopyWebMark(contents, m_package);
        }
        return result.ok ? mxovshare::UnpackPackage(m_package, m_folder, progress) : result;
    }

    [[nodiscard]] PackageResult MoveTo(const std::wstring& target, const std::wstring& name) const {
        const std::wstring path = common::LongPath(target + L"\\" + name);
        MakeFolders(ParentFolder(path));
        return MoveFileExW(common::LongPath(m_folder + L"\\" + name).c_str(), path.c_str(),
                           MOVEFILE_REPLACE_EXISTING)
                   ? Succeeded()
                   : FailedBecause(
                         Text(IDS_FILE_NOT_COPIED, {name, common::SystemErrorText(GetLastError())}));
    }

private:
    std::wstring m_folder;
    std::wstring m_package;
};

PackageResult RestoreFrom(const std::wstring& contents, const std::vector<const KeptFile*>& files,
                          const std::wstring& target, mxovshare::PackageProgress* progress) {
    StoredFiles stored;
    if (PackageResult result = stored.Read(contents); !result.ok) {
        return result;
    }
    FileNames names;
    for (const KeptFile* file : files) {
        if (!stored.Holds(*file)) {
            return FailedBecause(Text(IDS_CONTENT_MISSING, {file->name}));
        }
        names.insert(file->name);
    }
    const Unpacked unpacked(target);
    PackageResult result = unpacked.Unpack(contents, stored.Without(names), progress);
    for (const KeptFile* file : files) {
        if (result.ok) {
            result = unpacked.MoveTo(target, file->name);
        }
    }
    return result;
}

} // namespace

PackageResult RestoreFiles(const std::wstring& folder, const std::vector<KeptFile>& files,
                           const std::wstring& target, mxovshare::PackageProgress* progress) {
    PackageResult result = RefusePrograms(files);
    FilesByContents byContents;
    for (const KeptFile& file : files) {
        byContents[file.contents].push_back(&file);
    }
    MakeFolders(target);
    for (const auto& [contents, group] : byContents) {
        if (result.ok) {
            result = RestoreFrom(ContentsPath(folder, contents), group, target, progress);
        }
    }
    return result;
}

} // namespace viewer
