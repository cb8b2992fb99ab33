// The time line of a package's earlier versions.
#pragma once

#include "versions/VersionFolder.h"

#include <care/compare/Comparison.h>

#include <windows.h>

namespace viewer {

/// What the dialog shows.
struct ShownVersions {
    std::wstring package;      ///< its name
    VersionList list;          ///< of its versions
    care::PackageContent open; ///< what is open now
    bool areKept = true;       ///< whether saves are kept
    bool isDecided = false;    ///< whether the user cannot change that
};

/// What the dialog's buttons do. `owner` is the dialog.
class VersionActions {
public:
    virtual void LookAt(HWND owner, const Version& version) = 0;
    virtual void CompareWith(HWND owner, const Version& version) = 0;

    /// Both change what is open, and what the dialog shows of it. False when nothing was changed.
    virtual bool TakeBack(HWND owner, const Version& version, const care::FileChange& document) = 0;
    virtual bool TakeAllBack(HWND owner, const Version& version) = 0;

    virtual void KeepVersions(bool kept) = 0;

protected:
    ~VersionActions() = default;
};

/// Shows the versions until the user closes the dialog or has taken all of one back.
void ShowVersions(HWND owner, const ShownVersions& shown, VersionActions& actions);

} // namespace viewer
