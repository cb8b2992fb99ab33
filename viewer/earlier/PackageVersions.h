// The earlier versions of the open package: looking at them, comparing and taking back.
#pragma once

#include "common/Handles.h"
#include "versions/WorkFolder.h"

#include <memory>
#include <vector>

namespace viewer {

class PackageController;
class PackageSession;
class PackageView;
class VersionKeeper;

class PackageVersions {
public:
    /// All of them outlive it.
    PackageVersions(PackageView& view, PackageController& packages, VersionKeeper& keeper)
        : m_view(view), m_packages(packages), m_keeper(keeper) {}
    ~PackageVersions() { Hold({}); }
    PackageVersions(const PackageVersions&) = delete;
    PackageVersions& operator=(const PackageVersions&) = delete;

    /// Shows the time line of the open package, from which versions are looked at and taken back.
    void Show();

    /// Keeps the file of a version that is open here from being replaced, and removes it once it is closed.
    /// Called when another package may be open.
    void OnPackageChanged();

private:
    bool Show(PackageSession& session);
    void Hold(const std::wstring& file);

    PackageView& m_view;
    PackageController& m_packages;
    VersionKeeper& m_keeper;
    std::vector<std::shared_ptr<WorkFolder>> m_shown; // with the versions that other viewers show
    std::wstring m_heldFile;                          // the version that is open here; empty for none
    common::UniqueHandle m_held;
};

} // namespace viewer
