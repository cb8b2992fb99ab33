#include "preview/PreviewPane.h"

#include "preview/PreviewImage.h"
#include "texts/Texts.h"
#include "window/Painting.h"
#include "window/Palette.h"

namespace viewer {

namespace {

constexpr wchar_t kPaneClass[] = L"MXOVPreviewPane";
constexpr int kMargin = 24; // at 96 dots per inch, as the other
constexpr int kLineGap = 4;

} // namespace

bool PreviewPane::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kPaneClass;
    return Window::Create(windowClass, 0, Text(IDS_PAGE_PICTURE).c_str(), WS_CHILD | WS_CLIPSIBLINGS, parent,
                          id);
}

void PreviewPane::Show(PackageSummary summary) {
    m_summary = std::move(summary);
    m_picture = LoadPreview(m_summary.previewFile);
    std::wstring text = m_summary.name;
    for (const std::wstring& line :
         {m_summary.version, m_summary.lastChange, m_picture ? std::wstring() : Text(IDS_NO_PICTURE)}) {
        if (!line.empty()) {
            text += L"\n" + line;
        }
    }
    SetWindowTextW(Handle(), text.c_str());
    InvalidateRect(Handle(), nullptr, FALSE);
}

void PreviewPane::Clear() {
    m_summary = {};
    m_picture.reset();
    SetWindowTextW(Handle(), Text(IDS_PAGE_PICTURE).c_str());
    InvalidateRect(Handle(), nullptr, FALSE);
}

LRESULT PreviewPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        OnMetricsChanged();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_PAINT: {
        const BufferedPaint paint(Handle());
        Paint(paint.Dc(), paint.Area());
        return 0;
    }
    default:
        break;
    }
    return Default(message, wParam, lParam);
}

void PreviewPane::OnMetricsChanged() {
    m_textFont = MakeMessageFont(Dpi());
    m_headingFont = MakeHeadingFont(Dpi());
}

void PreviewPane::Paint(HDC dc, const RECT& area) const {
    const Palette palette = CurrentPalette();
    Fill(dc, area, palette.page);
    RECT inner = area;
    InflateRect(&inner, -Scale(kMargin), -Scale(kMargin));
    if (inner.right <= inner.left || inner.bottom <= inner.top) {
        return;
    }
    PaintPackage(dc, inner, palette);
}

void PreviewPane::PaintPackage(HDC dc, const RECT& area, const Palette& palette) const {
    constexpr UINT kLine = DT_SINGLELINE | DT_END_ELLIPSIS;
    RECT rest = area;
    rest.top += Write(dc, m_headingFont.get(), palette.text, m_summary.name, rest, kLine);
    for (const std::wstring& line : {m_summary.version, m_summary.lastChange}) {
        if (!line.empty()) {
            rest.top += Scale(kLineGap);
            rest.top += Write(dc, m_textFont.get(), palette.text, line, rest, DT_WORDBREAK);
        }
    }
    rest.top += Scale(kMargin) / 2;
    if (rest.bottom > rest.top) {
        PaintPicture(dc, rest, palette);
    }
}

void PreviewPane::PaintPicture(HDC dc, const RECT& area, const Palette& palette) const {
    Fill(dc, area, palette.cardEdge);
    RECT card = area;
    InflateRect(&card, -1, -1);
    Fill(dc, card, palette.card);
    InflateRect(&card, -Scale(kMargin) / 2, -Scale(kMargin) / 2);
    if (m_picture) {
        DrawPicture(dc, m_picture.get(), card);
    } else if (card.right > card.left && card.bottom > card.top) {
        WriteCentred(dc, m_textFont.get(), palette.cardText, Text(IDS_NO_PICTURE), card);
    }
}

} // namespace viewer
