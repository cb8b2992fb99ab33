#include "document/DocumentPane.h"

#include "document/DocumentCommands.h"
#include "package/ValueText.h"
#include "texts/Texts.h"
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
constexpr int kPageMargin = 16; // at 96 dots per inch, as the others
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
        MakeFonts();
        m_buttons.Create(Handle(), m_textFont.get());
        return m_text.Create(Handle(), kTextId) ? 0 : -1;
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
    m_textFont = MakeMessageFont();
    m_headingFont = MakeHeadingFont();
}

// Of files of its kind, without touching the file.
void DocumentPane::LoadDocumentIcon() {
    m_icon.reset();
    m_kindText.clear();
    SHFILEINFOW info = {};
    constexpr UINT kWanted = SHGFI_USEFILEATTRIBUTES | SHGFI_ICON | SHGFI_LARGEICON | SHGFI_TYPENAME;
    if (Has(ContentKind::Other) &&
        SHGetFileInfoW(m_content->details.name.c_str(), FILE_ATTRIBUTE_NORMAL, &info, sizeof info, kWanted)) {
        m_icon.reset(info.hIcon);
        m_kindText = *info.szTypeName ? info.szTypeName + std::wstring(L"\n") : L"";
    }
}

// From top to bottom: name, facts, buttons, content.
void DocumentPane::Arrange() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    InflateRect(&area, -Scale(kPageMargin), -Scale(kPageMargin));
    const int top =
        area.top + FontHeight(m_headingFont.get()) + FontHeight(m_textFont.get()) + Scale(3 * kPageGap);
    m_body = area;
    m_body.top = m_buttons.Place(area.left, top, area.right) + Scale(kPageGap);
    MoveWindow(m_text.Handle(), m_body.left, m_body.top, std::max(0L, m_body.right - m_body.left),
               std::max(0L, m_body.bottom - m_body.top), TRUE);
    InvalidateRect(Handle(), nullptr, FALSE);
}

int DocumentPane::FontHeight(HFONT font) const {
    TEXTMETRICW metrics = {};
    GetTextMetricsW(TextContext(Handle(), font).Dc(), &metrics);
    return metrics.tmHeight;
}

void DocumentPane::OnCommand(int command) {
    if (m_content) {
        const std::wstring path = m_content->details.path; // a dialog may bring another document
        RunDocumentCommand(GetAncestor(Handle(), GA_ROOT), command, path);
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
    constexpr UINT kLine = DT_SINGLELINE | DT_END_ELLIPSIS;
    RECT line = area;
    InflateRect(&line, -Scale(kPageMargin), -Scale(kPageMargin));
    line.top += Write(dc, m_headingFont.get(), palette.text, m_content->details.name, line, kLine);
    line.top += Scale(kPageGap);
    Write(dc, m_textFont.get(), palette.text, FactsText(), line, kLine);
    PaintContent(dc, palette);
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
        PaintIcon(dc, palette);
        break;
    case ContentKind::Text:
        break;
    }
}

void DocumentPane::PaintIcon(HDC dc, const Palette& palette) const {
    const int side = GetSystemMetrics(SM_CXICON);
    const int left = (m_body.left + m_body.right - side) / 2;
    const int middle = (m_body.top + m_body.bottom) / 2;
    DrawIconEx(dc, left, middle - side - Scale(kPageMargin), m_icon.get(), side, side, 0, nullptr, DI_NORMAL);
    WriteCentred(dc, m_textFont.get(), palette.text, m_kindText + Text(IDS_KIND_WITHOUT_PREVIEW), m_body);
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
