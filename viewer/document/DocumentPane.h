// The page of a document: its name and facts, what can be done with it, and what is in it.
#pragma once

#include "common/Handles.h"
#include "document/DocumentButtons.h"
#include "document/DocumentContent.h"
#include "document/TextView.h"
#include "handler/PreviewHost.h"

#include <memory>

namespace viewer {

struct Palette;

class DocumentPane : public Window {
public:
    /// Creates the page, hidden.
    bool Create(HWND parent, int id);

    /// Shows a document; null for none. The one that is shown already stays as it is while its file does.
    void Show(std::unique_ptr<DocumentContent> content);

    /// Takes the windows of a preview handler out of the page. False when the handler does not answer; the
    /// page cannot be destroyed then.
    [[nodiscard]] bool EndPreview() { return m_preview.End(); }

    /// The document that is shown; null for none.
    [[nodiscard]] const DocumentDetails* Details() const { return m_content ? &m_content->details : nullptr; }

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    void MakeFonts();
    void LoadDocumentIcon();
    void StartPreview();
    void OnPreviewFailed();
    void Arrange();
    void OnCommand(int command);
    void OnPress(POINT place) const;
    void OnContextMenu(POINT place);
    void Paint(HDC dc, const RECT& area) const;
    void PaintContent(HDC dc, const Palette& palette) const;
    void PaintHeading(HDC dc, const Palette& palette) const;
    [[nodiscard]] std::wstring FactsText() const;
    [[nodiscard]] std::wstring KindText() const;
    [[nodiscard]] RECT TextPlace() const;
    [[nodiscard]] bool Has(DocumentContent::Kind kind) const { return m_content && m_content->kind == kind; }

    std::unique_ptr<DocumentContent> m_content;
    DocumentButtons m_buttons;
    TextView m_text;
    PreviewHost m_preview;
    RECT m_heading = {};       // of icon, name and facts, in client coordinates
    RECT m_body = {};          // of the content, likewise
    common::UniqueIcon m_icon; // of files of this kind
    std::wstring m_kindName;   // of the same
    common::UniqueFont m_headingFont;
    common::UniqueFont m_textFont;
};

} // namespace viewer
