#include "Commands.h"
#include "History.h"
#include "output/LineText.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <care/Bundle.h>
#include <care/Links.h>
#include <common/LongPath.h>
#include <package/FileStatus.h>
#include <package/PackageInformation.h>
#include <package/PackagePath.h>

using namespace docview;

namespace {

using mxovshare::PackageChanges;

void PrintMove(const std::wstring& from, const std::wstring& to) {
    PrintLine(OneLine(from + L" -> " + to));
}

void WarnIfHidden(const care::PackageContent& view) {
    if (!IsRecentVersion(view.sections.Value(inikey::kFileInfo, inikey::kVersion))) {
        PrintWarning(
            L"the package states a version before 2021, for which additional documents are not shown");
    }
}

// False after a failure that was reported.
bool PrintBundled(const std::wstring& file) {
    const std::optional<care::PackageContent> view = ReadPackage(file);
    if (!view) {
        return false;
    }
    const FileStatus status = StatusOfFile(common::LongPath(file));
    PrintLine(L"bundled " + file + L": " + Summary(view->entries) + L", packed into " +
              std::to_wstring(status.size));
    return true;
}

void WarnIfMissing(const std::wstring& path) {
    if (!IsNetworkPath(path) && !StatusOfFile(common::LongPath(path)).exists) {
        PrintWarning(L"linked document \"" + path + L"\" does not exist");
    }
}

} // namespace

int Bundle(const Arguments& arguments) {
    const std::optional<care::PackageContent> view = ReadPackage(arguments[0]);
    if (!view) {
        return kFailed;
    }
    care::Bundle bundle = care::PlanBundle(view->sections, view->entries, arguments.Has(L"--network"));
    SetHistory(arguments, L"Bundled linked documents", bundle.changes);
    if (!WriteChanged(arguments[0], arguments[1], bundle.changes)) {
        return kFailed;
    }
    for (const care::TakenDocument& document : bundle.taken) {
        PrintMove(document.path, document.name);
    }
    if (!PrintBundled(arguments[1])) {
        return kFailed;
    }
    for (const care::LeftDocument& document : bundle.left) {
        PrintWarning(L"linked document \"" + document.path + L"\" " + document.reason);
    }
    if (!bundle.taken.empty()) {
        WarnIfHidden(*view);
    }
    return bundle.left.empty() ? kDone : kFindings;
}

int Relink(const Arguments& arguments) {
    const std::wstring from = arguments.Value(L"--from");
    const std::wstring to = arguments.Value(L"--to");
    for (const auto& [name, path] : {std::pair(L"--from", from), std::pair(L"--to", to)}) {
        if (!care::IsFullPath(path)) {
            throw UsageError{name + (L" is no full path: \"" + path + L"\"")};
        }
    }
    const std::optional<care::PackageContent> view = ReadPackage(arguments[0]);
    if (!view) {
        return kFailed;
    }
    const std::vector<care::Relinked> links = care::Relink(view->sections, from, to);
    PackageChanges changes;
    for (const care::Relinked& relinked : links) {
        changes.information.push_back({relinked.link.section, relinked.link.key, relinked.path});
    }
    SetHistory(arguments, L"Relinked documents", changes);
    const bool isTrial = arguments.Has(L"--dry-run");
    if (!links.empty() && !isTrial && !WriteChanged(arguments[0], arguments[0], changes)) {
        return kFailed;
    }
    for (const care::Relinked& relinked : links) {
        PrintMove(relinked.link.path, relinked.path);
    }
    PrintLine((isTrial ? L"would relink " : L"relinked ") + arguments[0] + L": " +
              Count(links.size(), L"link"));
    for (const care::Relinked& relinked : links) {
        WarnIfMissing(relinked.path);
    }
    return kDone;
}
