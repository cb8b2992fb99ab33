#include "document/DocumentPane.h"

#include "document/DocumentCommands.h"
#include "package/ValueText.h"
#include "texts/Texts.h"
#include "window/FileDrag.h"
#include "window/Painting.h"
#include "window/Palette.h"

#include <windowsx.h>

#include <algorithm>

#include <shellapi.h>

namespace viewer {

namespace {

using ContentKind = DocumentContent::Kind;

constexpr wchar_t kDocumentClass[] = L"MXOVDocumentPane";
constexpr int kTextId = 100;
constexpr int kPreviewId = 101;
constexpr UINT_PTR kPreviewTimer = 1;
constexpr UINT kPreviewDelay = 200; // milliseconds, so that nothing starts while the user runs through a list
constexpr int kPageMargin = 16;     // at 96 dots per inch, as the others
constexpr int kPageGap = 6;

} // namespace

bool DocumentPane::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kDocumentClass;
    return Window::Create(windowClass, WS_EX_CONTROLPARENT, Text(IDS_SELECT_DOCUMENT).c_str(),
                          WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

void DocumentPane::Show(std::unique_ptr<DocumentContent> content) {
    if (content && m_content && IsSameState(content->details, m_content->details)) {
        m_content->details = content->details; // the place in the package may have changed
        return;
    }
    m_content = std::move(content);
    m_text.Show(m_content ? std::move(m_content->lines) : std::vector<TextLine>());
    ShowWindow(m_text.Handle(), Has(ContentKind::Text) ? SW_SHOWNA : SW_HIDE);
    m_preview.Clear();
    if (Has(ContentKind::Previewed)) {
        SetTimer(Handle(), kPreviewTimer, kPreviewDelay, nullptr);
    }
    LoadDocumentIcon();
    m_buttons.Show(Details());
    Arrange();
    const std::wstring name =
        m_content ? m_content->details.name + L"\n" + FactsText() : Text(IDS_SELECT_DOCUMENT);
    SetWindowTextW(Handle(), name.c_str());
    InvalidateRect(Handle(), nullptr, FALSE);
}

LRESULT DocumentPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        m_buttons.Create(Handle());
        MakeFonts();
        m_preview.OnFailed([this] { OnPreviewFailed(); });
        return m_text.Create(Handle(), kTextId) && m_preview.Create(Handle(), kPreviewId) ? 0 : -1;
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_PAINT: {
        const BufferedPaint paint(Handle());
        Paint(paint.Dc(), paint.Area());
        return 0;
    }
    case WM_TIMER:
        StartPreview();
        return 0;
    case WM_LBUTTONDOWN:
        OnPress({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam));
        return 0;
    case WM_CONTEXTMENU:
        OnContextMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    default:
        return Default(message, wParam, lParam);
    }
}

void DocumentPane::MakeFonts() {
    common::UniqueFont textFont = MakeMessageFont(Dpi());
    m_buttons.SetFont(textFont.get(), Dpi());
    m_textFont = std::move(textFont);
    m_headingFont = MakeHeadingFont(Dpi());
}

void DocumentPane::OnMetricsChanged() {
    MakeFonts();
    m_text.ChangeDpi(Dpi());
    m_preview.ChangeDpi(Dpi());
    Arrange();
}

// Of files of its kind, without touching the file.
void DocumentPane::LoadDocumentIcon() {
    m_icon.reset();
    m_kindName.clear();
    SHFILEINFOW info = {};
    constexpr UINT kWanted = SHGFI_USEFILEATTRIBUTES | SHGFI_ICON | SHGFI_LARGEICON | SHGFI_TYPENAME;
    if (m_content && m_content->details.exists &&
        SHGetFileInfoW(m_content->details.name.c_str(), FILE_ATTRIBUTE_NORMAL, &info, sizeof info, kWanted)) {
        m_icon.reset(info.hIcon);
        m_kindName = info.szTypeName;
    }
}

void DocumentPane::StartPreview() {
    KillTimer(Handle(), kPreviewTimer);
    if (!Has(ContentKind::Previewed)) {
        return;
    }
    m_preview.Show(std::move(m_content->preview));
}

void DocumentPane::OnPreviewFailed() {
    if (m_content) {
        m_content->kind = ContentKind::Other;
        InvalidateRect(Handle(), nullptr, FALSE);
    }
}

// From top to bottom: name, facts, buttons, content.
void DocumentPane::Arrange() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    InflateRect(&area, -Scale(kPageMargin), -Scale(kPageMargin));
    m_heading = area;
    const RECT text = TextPlace();
    m_heading.bottom = text.top + LineHeight(Handle(), m_headingFont.get()) + Scale(kPageGap) +
                       WrappedHeight(Handle(), m_textFont.get(), m_content ? FactsText() : std::wstring(),
                                     text.right - text.left);
    m_body = area;
    m_body.top =
        m_buttons.Place(area.left, m_heading.bottom + Scale(2 * kPageGap), area.right) + Scale(kPageGap);
    for (const HWND content : {m_text.Handle(), m_preview.Handle()}) {
        MoveWindow(content, m_body.left, m_body.top, std::max(0L, m_body.right - m_body.left),
                   std::max(0L, m_body.bottom - m_body.top), TRUE);
    }
    InvalidateRect(Handle(), nullptr, FALSE);
}

// Of name and facts, beside the icon.
RECT DocumentPane::TextPlace() const {
    RECT place = m_heading;
    if (m_icon) {
        place.left += GetSystemMetricsForDpi(SM_CXICON, Dpi()) + Scale(2 * kPageGap);
    }
    return place;
}

void DocumentPane::OnCommand(int command) {
    if (m_content) {
        const std::wstring path = m_content->details.path; // a dialog may bring another document
        RunDocumentCommand(GetAncestor(Handle(), GA_ROOT), command, path);
    }
}

// Icon, name and picture stand for the file and can be dragged.
void DocumentPane::OnPress(POINT place) const {
    if (m_content && m_content->details.exists && (PtInRect(&m_heading, place) || PtInRect(&m_body, place))) {
        const std::wstring path = m_content->details.path; // messages may bring another document
        DragFileOut(Handle(), path);
    }
}

void DocumentPane::OnContextMenu(POINT place) {
    if (!m_content) {
        return;
    }
    if (place.x == -1 && place.y == -1) { // from the keyboard
        place = {m_body.left, m_body.top};
        ClientToScreen(Handle(), &place);
    }
    if (const int chosen = ChooseDocumentCommand(Handle(), place, m_content->details); chosen != 0) {
        OnCommand(chosen);
    }
}

void DocumentPane::Paint(HDC dc, const RECT& area) const {
    const Palette palette = CurrentPalette();
    Fill(dc, area, palette.page);
    if (!m_content) {
        WriteCentred(dc, m_textFont.get(), palette.text, Text(IDS_SELECT_DOCUMENT), area);
        return;
    }
    PaintHeading(dc, palette);
    PaintContent(dc, palette);
}

// The icon, beside it name and facts.
void DocumentPane::PaintHeading(HDC dc, const Palette& palette) const {
    constexpr UINT kLine = DT_SINGLELINE | DT_END_ELLIPSIS;
    if (m_icon) {
        const int side = GetSystemMetricsForDpi(SM_CXICON, Dpi());
        DrawIconEx(dc, m_heading.left, m_heading.top, m_icon.get(), side, side, 0, nullptr, DI_NORMAL);
    }
    RECT place = TextPlace();
    place.top += Write(dc, m_headingFont.get(), palette.text, m_content->details.name, place, kLine);
    place.top += Scale(kPageGap);
    Write(dc, m_textFont.get(), palette.text, FactsText(), place, DT_WORDBREAK);
}

void DocumentPane::PaintContent(HDC dc, const Palette& palette) const {
    if (m_body.right <= m_body.left || m_body.bottom <= m_body.top) {
        return;
    }
    switch (m_content->kind) {
    case ContentKind::Picture:
        DrawPicture(dc, m_content->picture.get(), m_body);
        break;
    case ContentKind::Missing:
        WriteCentred(dc, m_textFont.get(), palette.text, Text(IDS_FILE_NOT_FOUND, {m_content->details.path}),
                     m_body);
        break;
    case ContentKind::Other:
        WriteCentred(dc, m_textFont.get(), palette.text, KindText(), m_body);
        break;
    case ContentKind::Previewed:
    case ContentKind::Text:
        break;
    }
}

std::wstring DocumentPane::KindText() const {
    const std::wstring text =
        Text(m_content->isFromOutside ? IDS_KIND_FROM_OUTSIDE : IDS_KIND_WITHOUT_PREVIEW);
    return m_kindName.empty() ? text : m_kindName + L"\n" + text;
}

std::wstring DocumentPane::FactsText() const {
    const DocumentDetails& document = m_content->details;
    if (!document.exists) {
        return Text(document.isLink ? IDS_LINK_NOT_FOUND : IDS_COPY_NOT_FOUND);
    }
    std::wstring facts =
        Text(IDS_SIZE_AND_TIME, {ByteSizeText(document.size), LocalTimeText(document.modified)});
    if (document.isLink) {
        facts = Text(IDS_LINKED, {facts});
    }
    return m_content->isCut ? Text(IDS_CUT_TEXT, {facts}) : facts;
}

} // namespace viewer
