// What the user does with the earlier versions of the open package.
#pragma once

#include "earlier/TakingBack.h"
#include "earlier/VersionsDialog.h"
#include "versions/WorkFolder.h"

#include <functional>
#include <memory>

namespace viewer {

class PackageSession;
class VersionKeeper;

class VersionCommands final : public VersionActions {
public:
    /// `isUnsaved`: the package has changes that are not in its file. `shown` receives the folders with the
    /// versions that are looked at, which stay as long as they do. All of them outlive it.
    VersionCommands(PackageSession& session, VersionKeeper& keeper, bool isUnsaved,
                    std::vector<std::shared_ptr<WorkFolder>>& shown)
        : m_session(session), m_keeper(keeper), m_isUnsaved(isUnsaved), m_shownFolders(shown) {}

    /// Reads the versions and what is open. False when that fails, which is shown, or is cancelled.
    [[nodiscard]] bool Read(HWND owner);

    [[nodiscard]] const ShownVersions& Shown() const { return m_shown; }

    /// Whether something was taken back.
    [[nodiscard]] bool HasChanged() const { return m_hasChanged; }

    void LookAt(HWND owner, const Version& version) override;
    void CompareWith(HWND owner, const Version& version) override;
    bool TakeBack(HWND owner, const Version& version, const care::FileChange& document) override;
    bool TakeAllBack(HWND owner, const Version& version) override;
    void KeepVersions(bool kept) override;

private:
    [[nodiscard]] std::wstring Name() const;
    [[nodiscard]] bool ReadOpen(HWND owner);
    [[nodiscard]] std::shared_ptr<WorkFolder> NewWork(HWND owner) const;
    [[nodiscard]] std::shared_ptr<WorkFolder> Restore(HWND owner, const std::vector<KeptFile>& files) const;
    [[nodiscard]] bool
    Take(HWND owner, const Version& version, const std::vector<KeptFile>& files,
         const std::function<mxovshare::PackageChanges(const RestoredVersion&)>& changesOf);
    [[nodiscard]] bool IsChanged(const std::wstring& name) const;
    [[nodiscard]] bool IsReplacing(HWND owner) const;

    PackageSession& m_session;
    VersionKeeper& m_keeper;
    const bool m_isUnsaved;
    std::vector<std::shared_ptr<WorkFolder>>& m_shownFolders;
    ShownVersions m_shown;
    bool m_hasChanged = false;
};

} // namespace viewer
