#include "care/PortableCopy.h"

#include "care/UnpackedContent.h"
#include "common/LongPath.h"
#include "common/SystemError.h"
#include "package/DiskCatalogueSource.h"
#include "package/PackageInformation.h"
#include "package/ValueText.h"
#include "prompts/UnsavedPrompts.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

using mxovshare::PackageResult;

// A file of this process that is deleted at the end; its path is empty when none can be created.
class TemporaryPackage {
public:
    TemporaryPackage() {
        wchar_t folder[MAX_PATH + 1] = L"";
        wchar_t path[MAX_PATH] = L"";
        if (GetTempPathW(ARRAYSIZE(folder), folder) && GetTempFileNameW(folder, L"mxv", 0, path)) {
            m_path = path;
        }
    }
    ~TemporaryPackage() {
        if (!m_path.empty()) {
            DeleteFileW(m_path.c_str());
        }
    }
    TemporaryPackage(const TemporaryPackage&) = delete;
    TemporaryPackage& operator=(const TemporaryPackage&) = delete;

    [[nodiscard]] const std::wstring& Path() const { return m_path; }

private:
    std::wstring m_path;
};

// The target appears with all its documents or not at all.
PackageResult WriteWhole(const std::wstring& folder, const std::wstring& target,
                         const mxovshare::PackageChanges& changes, WorkProgress& progress) {
    const TemporaryPackage plain;
    if (plain.Path().empty()) {
        return {.ok = false, .cancelled = false, .message = common::SystemErrorText(GetLastError())};
    }
    PackageResult result = mxovshare::CreatePackage(folder, plain.Path(), &progress);
    return result.ok ? mxovshare::ChangePackage(plain.Path(), target, changes, &progress) : result;
}

} // namespace

PortableCopy WritePortableCopy(const std::wstring& folder, const std::wstring& target,
                               WorkProgress& progress) {
    PortableCopy copy;
    care::PackageContent content;
    copy.result = ReadUnpacked(folder, content);
    if (!copy.result.ok) {
        return copy;
    }
    copy.bundle = care::PlanBundle(content.sections, content.entries, true);
    copy.bundle.changes.operation = Text(IDS_SAVED_AS_PORTABLE);
    copy.result = WriteWhole(folder, target, copy.bundle.changes, progress);
    copy.size = docview::DiskCatalogueSource({}).Status(common::LongPath(target)).size;
    copy.hidesDocuments = !copy.bundle.taken.empty() &&
                          !docview::IsRecentVersion(
                              content.sections.Value(docview::inikey::kFileInfo, docview::inikey::kVersion));
    return copy;
}

std::wstring PortableSummary(const PortableCopy& copy) {
    std::vector<std::wstring> taken;
    for (const care::TakenDocument& document : copy.bundle.taken) {
        taken.push_back(document.path);
    }
    std::vector<std::wstring> left;
    for (const care::LeftDocument& document : copy.bundle.left) {
        left.push_back(Text(IDS_LEFT_REASON, {document.path, document.reason}));
    }
    std::wstring text =
        taken.empty() ? Text(IDS_NOTHING_TAKEN) + L"\n" : Text(IDS_TAKEN) + L"\n" + ShortList(taken);
    if (!left.empty()) {
        text += L"\n" + Text(IDS_LEFT_OUT) + L"\n" + ShortList(left);
    }
    if (copy.hidesDocuments) {
        text += L"\n" + Text(IDS_HIDES_DOCUMENTS) + L"\n";
    }
    return text + L"\n" + Text(IDS_PORTABLE_SIZE, {ByteSizeText(copy.size)});
}

} // namespace viewer
