// The right side of the main window: the pages of the package and of the selected document, behind tabs.
#pragma once

#include "document/DocumentPane.h"
#include "preview/HistoryPane.h"
#include "preview/PreviewPane.h"
#include "start/StartPane.h"

#include <array>

namespace viewer {

class MainPages : public Window {
public:
    enum class Page { Picture, History, Document };

    bool Create(HWND parent, int id);

    /// Shows a package on its pages; its picture comes to the front unless there are tabs already.
    void ShowPackage(PackageSummary summary, std::vector<HistoryLine> history);

    /// Shows the page of a window without a package, with the recent ones and without tabs.
    void ShowStart(const std::vector<std::wstring>& recent);

    /// Shows a document on its page; null for none.
    void ShowDocument(std::unique_ptr<DocumentContent> content) { m_document.Show(std::move(content)); }

    /// Takes the windows of a preview handler out of this one. False when the handler does not answer; this
    /// window cannot be destroyed then.
    [[nodiscard]] bool EndPreview() { return m_document.EndPreview(); }

    /// The document on its page; null for none.
    [[nodiscard]] const DocumentDetails* Document() const { return m_document.Details(); }

    /// Brings a page to the front, with the tabs.
    void Select(Page page);

    /// Sets the focus to the tabs, without a package to the page for opening one.
    void TakeFocus();

    /// Handles the keys that move the focus inside; true when it has handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    bool CreateTabs();
    void Arrange();
    void ShowSelected();
    [[nodiscard]] std::array<HWND, 3> Pages() const;
    [[nodiscard]] bool HasTabs() const { return (GetWindowLongW(m_tabs, GWL_STYLE) & WS_VISIBLE) != 0; }

    HWND m_tabs = nullptr; // child, destroyed with the window
    common::UniqueFont m_font;
    StartPane m_start;
    PreviewPane m_preview;
    HistoryPane m_history;
    DocumentPane m_document;
};

} // namespace viewer
