// Keeps versions of a package as the viewer does.
// version_driver CONTROL ACTION STORE PACKAGE FOLDER
//   keep: keeps one more version, of which two and one of the day stay.
//   recover: unpacks all versions that are there into FOLDER\before-0, FOLDER\before-1, ..., keeps one more,
//   and unpacks all into FOLDER\after-0, ... One line reports each version and each keeping.
#include "common/Utf8.h"
#include "versions/VersionStore.h"

#include <cstdio>

using namespace viewer;

namespace {

void Report(const char* done, const mxovshare::PackageResult& result) {
    std::printf("%s\n", result.ok ? done : common::ToUtf8(result.message).c_str());
}

void RestoreAll(const VersionStore& store, const std::wstring& package, const std::wstring& folder) {
    const VersionList list = store.Read(package);
    for (std::size_t i = 0; i < list.versions.size(); ++i) {
        Report("restored",
               store.Restore(package, list.versions[i].files, folder + L"-" + std::to_wstring(i)));
    }
    for (const std::wstring& damaged : list.damaged) {
        std::printf("damaged %ls\n", damaged.c_str());
    }
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count < 6) {
        return 2;
    }
    const std::wstring action = arguments[2];
    const VersionStore store(arguments[3]);
    const std::wstring package = arguments[4];
    const std::wstring folder = arguments[5];
    if (action == L"recover") {
        RestoreAll(store, package, folder + L"\\before");
    }
    VersionLimits limits;
    limits.versions = 2;
    Report("kept", store.Keep(package, limits));
    if (action == L"recover") {
        RestoreAll(store, package, folder + L"\\after");
    }
    return 0;
}
