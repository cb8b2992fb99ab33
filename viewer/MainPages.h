// The right side of the main window: the pages of the package and of the selected document, behind tabs.
#pragma once

#include "document/DocumentPane.h"
#include "preview/HistoryPane.h"
#include "preview/PreviewPane.h"

#include <array>

namespace viewer {

class MainPages : public Window {
public:
    enum class Page { Picture, History, Document };

    bool Create(HWND parent, int id);

    /// Shows a package on its pages; its picture comes to the front unless there are tabs already.
    void ShowPackage(PackageSummary summary, std::vector<HistoryLine> history);

    /// Shows the invitation to open a package, without tabs.
    void Clear();

    /// Shows a document on its page; null for none.
    void ShowDocument(std::unique_ptr<DocumentContent> content) { m_document.Show(std::move(content)); }

    /// The document on its page; null for none.
    [[nodiscard]] const DocumentDetails* Document() const { return m_document.Details(); }

    /// Brings a page to the front, with the tabs.
    void Select(Page page);

    /// Sets the focus to the tabs. False while there are none.
    bool TakeFocus();

    /// Handles the keys that move the focus inside; true when it has handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool CreateTabs();
    void Arrange();
    void ShowSelected();
    [[nodiscard]] std::array<HWND, 3> Pages() const;
    [[nodiscard]] bool HasTabs() const { return (GetWindowLongW(m_tabs, GWL_STYLE) & WS_VISIBLE) != 0; }

    HWND m_tabs = nullptr; // child, destroyed with the window
    common::UniqueFont m_font;
    PreviewPane m_preview;
    HistoryPane m_history;
    DocumentPane m_document;
};

} // namespace viewer
