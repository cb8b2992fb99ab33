// The list of what the check of a package found, with a button for each cure.
#pragma once

#include "care/CureActions.h"

#include <functional>

namespace viewer {

/// A window over the main window, which stays usable.
class FindingsWindow {
public:
    /// `cure` is called when the user presses a button for the selected finding.
    explicit FindingsWindow(std::function<void(CureCommand)> cure) : m_cure(std::move(cure)) {}
    ~FindingsWindow() { Close(); }
    FindingsWindow(const FindingsWindow&) = delete;
    FindingsWindow& operator=(const FindingsWindow&) = delete;

    /// Shows the findings over `owner` in place of those before; the selection stays at its row.
    void Show(HWND owner, const std::wstring& package, std::vector<care::Finding> findings);

    void Close();

    /// Null while it is not shown.
    [[nodiscard]] HWND Handle() const { return m_dialog; }
    [[nodiscard]] const std::vector<care::Finding>& Findings() const { return m_findings; }

    /// The selected one; null for none.
    [[nodiscard]] const care::Finding* Selected() const;

    /// Lets the window handle its keyboard messages; true when it has handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message) const {
        return m_dialog && IsDialogMessageW(m_dialog, &message);
    }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnInit(HWND dialog);
    void OnCommand(int command);
    void OnNotify(NMHDR& header) const;
    void ShowSelected() const;
    [[nodiscard]] HWND List() const;

    std::function<void(CureCommand)> m_cure;
    HWND m_dialog = nullptr;
    UINT m_dpi = USER_DEFAULT_SCREEN_DPI;
    std::vector<care::Finding> m_findings;
};

/// How many findings of each severity there are in a package, as a sentence.
[[nodiscard]] std::wstring FindingsSummary(const std::wstring& package,
                                           const std::vector<care::Finding>& findings);

} // namespace viewer
