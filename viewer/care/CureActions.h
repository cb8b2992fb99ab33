// Curing a finding in the open package, as the user asks for it.
#pragma once

#include <care/check/Cures.h>

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

namespace viewer {

class PackageSession;

/// The buttons beside the findings.
enum class CureCommand {
    Find,         ///< the user chooses the file
    FindInFolder, ///< it is searched by its name
    MakeCopy,
    Remove,
    Attach,
    SetDate,
};

/// What a button does.
[[nodiscard]] care::Cure CureOf(CureCommand command);

class CureActions {
public:
    /// `owner` owns the prompts. The findings are those of the session's package.
    CureActions(HWND owner, PackageSession& session, const std::vector<care::Finding>& findings)
        : m_owner(owner), m_session(session), m_findings(findings) {}

    /// Cures a finding, asking for a file where one is needed. A missing link that is found mends all missing
    /// links that moved with it. False when the package is as it was before; why is shown.
    [[nodiscard]] bool Run(CureCommand command, const care::Finding& finding);

    /// The number of findings that `Run` cured.
    [[nodiscard]] std::size_t Cured() const { return m_cured; }

private:
    [[nodiscard]] std::optional<std::wstring> AskForFile(CureCommand command, const std::wstring& name) const;
    [[nodiscard]] std::optional<std::wstring> Search(const std::wstring& name) const;
    [[nodiscard]] bool Change(care::Cure cure, const care::Finding& finding, const std::wstring& path);
    void MendLinksBeside(care::FindingCure& edit, const care::PackageContent& content,
                         const care::Finding& finding, const std::wstring& path);
    [[nodiscard]] bool Apply(const mxovshare::PackageChanges& changes);
    void ShowFailure(const std::wstring& text) const;

    HWND m_owner;
    PackageSession& m_session;
    const std::vector<care::Finding>& m_findings;
    std::size_t m_cured = 0;
};

} // namespace viewer
