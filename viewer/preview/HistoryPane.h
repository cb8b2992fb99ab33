// The page of the package's history: all entries, and the remarks of the selected one in full.
#pragma once

#include "common/Handles.h"
#include "package/PackageHistory.h"
#include "window/Window.h"

#include <vector>

#include <commctrl.h>

namespace viewer {

class HistoryPane : public Window {
public:
    /// Creates the page, hidden.
    bool Create(HWND parent, int id);

    /// Shows a history and selects its first entry; the one that is shown already stays as it is.
    void Show(std::vector<HistoryLine> lines);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    bool CreateParts();
    void AddColumns();
    void Arrange();
    void FitColumns(int width);
    void OnTextWanted(LVITEMW& item) const;
    void ShowRemarks();

    std::vector<HistoryLine> m_lines;
    HWND m_list = nullptr; // children, destroyed with the window
    HWND m_label = nullptr;
    HWND m_remarks = nullptr;
    common::UniqueFont m_font;
};

} // namespace viewer
