// The list of what the check of a package found, with a button for each cure.
#pragma once

#include "care/CureActions.h"
#include "window/Dialog.h"

#include <functional>

namespace viewer {

/// A window over the main window, which stays usable.
class FindingsWindow : public Dialog {
public:
    /// `cure` is called when the user presses a button for the selected finding.
    explicit FindingsWindow(std::function<void(CureCommand)> cure) : m_cure(std::move(cure)) {}
    ~FindingsWindow() override { Close(); }

    /// Shows the findings over `owner` in place of those before; the selection stays at its row.
    void Show(HWND owner, const std::wstring& package, std::vector<care::Finding> findings);

    void Close();

    [[nodiscard]] const std::vector<care::Finding>& Findings() const { return m_findings; }

    /// The selected one; null for none.
    [[nodiscard]] const care::Finding* Selected() const;

    /// Lets the window handle its keyboard messages; true when it has handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message) const {
        return Handle() && IsDialogMessageW(Handle(), &message);
    }

private:
    bool OnInit() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnDpiChanged(UINT before, UINT after) override;
    void OnCommand(int command);
    void OnNotify(NMHDR& header) const;
    void ShowSelected() const;
    [[nodiscard]] HWND List() const;

    std::function<void(CureCommand)> m_cure;
    std::vector<care::Finding> m_findings;
};

/// How many findings of each severity there are in a package, as a sentence.
[[nodiscard]] std::wstring FindingsSummary(const std::wstring& package,
                                           const std::vector<care::Finding>& findings);

} // namespace viewer
