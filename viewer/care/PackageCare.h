// The care of the open package: checking and curing it, and taking it along.
#pragma once

#include "care/FindingsWindow.h"

namespace viewer {

struct ComparedPackages;
class PackageController;
class PackageView;

class PackageCare {
public:
    /// Both outlive it.
    PackageCare(PackageView& view, PackageController& packages);

    /// Checks what is open and shows the findings, also when there are none.
    void Check();

    /// Saves a copy that depends on no file outside, where the user wants it, and shows what it holds. The
    /// open package is left alone.
    void SavePortableCopy();

    /// Lets the user choose another package and shows how what is open differs from it.
    void Compare();

    /// Shows how the package's file, which somebody else saved, differs from what is open.
    void CompareFile();

    /// Closes the findings of a package that is no longer open. Called when another one may be.
    void OnPackageChanged();

    /// Lets the findings handle their keyboard messages; true when they have handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message) const { return m_findings.PreTranslate(message); }

private:
    void CheckNow(const PackageSession& session);
    void Cure(CureCommand command);
    void SavePortableCopy(const PackageSession& session);
    void Compare(const std::wstring& name, const ComparedPackages& packages);

    PackageView& m_view;
    PackageController& m_packages;
    FindingsWindow m_findings;
    std::wstring m_checked; // folder of the session
};

} // namespace viewer
