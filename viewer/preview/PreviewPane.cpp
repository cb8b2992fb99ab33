#include "preview/PreviewPane.h"

#include "preview/PreviewImage.h"
#include "resources/resource.h"

#include <algorithm>

namespace viewer {

namespace {

constexpr wchar_t kPaneClass[] = L"MXOVPreviewPane";
constexpr wchar_t kInvitation[] = L"Drop a machining package here,\nor choose File > Open (Ctrl+O).";
constexpr wchar_t kNoPreview[] = L"This package has no preview picture.";
constexpr COLORREF kBackground = RGB(246, 247, 249);
constexpr COLORREF kCard = RGB(255, 255, 255);
constexpr COLORREF kCardEdge = RGB(208, 213, 220);
constexpr COLORREF kHeading = RGB(0, 102, 178);
constexpr COLORREF kText = RGB(84, 92, 104);
constexpr int kMargin = 24;
constexpr int kIconSide = 48;
constexpr int kLargestGrowth = 3; // a small picture is shown at most this much enlarged

// The current objects and colours of a device context, put back at the end.
class SavedState {
public:
    explicit SavedState(HDC dc) : m_dc(dc), m_saved(SaveDC(dc)) {}
    ~SavedState() { RestoreDC(m_dc, m_saved); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    HDC m_dc;
    int m_saved;
};

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

// Writes a text and returns its height.
int Write(HDC dc, HFONT font, COLORREF colour, const std::wstring& text, RECT area, UINT format) {
    const SavedState saved(dc);
    SelectObject(dc, font);
    SetTextColor(dc, colour);
    SetBkMode(dc, TRANSPARENT);
    return DrawTextW(dc, text.c_str(), -1, &area, format | DT_NOPREFIX);
}

void WriteCentred(HDC dc, HFONT font, const std::wstring& text, const RECT& area) {
    RECT needed = area;
    {
        const SavedState saved(dc);
        SelectObject(dc, font);
        DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    }
    RECT place = area;
    place.top += std::max(0L, (area.bottom - area.top - (needed.bottom - needed.top)) / 2);
    Write(dc, font, kText, text, place, DT_CENTER | DT_WORDBREAK);
}

// The largest place in the middle of the area that keeps the picture's proportions.
RECT Fit(SIZE picture, const RECT& area) {
    const double width = area.right - area.left;
    const double height = area.bottom - area.top;
    const double factor =
        std::min({width / picture.cx, height / picture.cy, static_cast<double>(kLargestGrowth)});
    const LONG fitWidth = std::max(1L, static_cast<LONG>(picture.cx * factor));
    const LONG fitHeight = std::max(1L, static_cast<LONG>(picture.cy * factor));
    const LONG left = (area.left + area.right - fitWidth) / 2;
    const LONG top = (area.top + area.bottom - fitHeight) / 2;
    return {left, top, left + fitWidth, top + fitHeight};
}

} // namespace

bool PreviewPane::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kPaneClass;
    return Window::Create(windowClass, 0, kInvitation, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, parent, id);
}

void PreviewPane::Show(PackageSummary summary) {
    m_hasPackage = true;
    m_summary = std::move(summary);
    m_picture = LoadPreview(m_summary.previewFile);
    std::wstring text = m_summary.name;
    for (const std::wstring& line :
         {m_summary.version, m_summary.lastChange, std::wstring(m_picture ? L"" : kNoPreview)}) {
        if (!line.empty()) {
            text += L"\n" + line;
        }
    }
    SetWindowTextW(Handle(), text.c_str());
    InvalidateRect(Handle(), nullptr, FALSE);
}

void PreviewPane::Clear() {
    m_hasPackage = false;
    m_summary = {};
    m_picture.reset();
    SetWindowTextW(Handle(), kInvitation);
    InvalidateRect(Handle(), nullptr, FALSE);
}

LRESULT PreviewPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        LoadPackageIcon();
        MakeFonts();
        break;
    case WM_SETTINGCHANGE:
        MakeFonts();
        break;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_PAINT:
        OnPaint();
        return 0;
    default:
        break;
    }
    return Default(message, wParam, lParam);
}

void PreviewPane::LoadPackageIcon() {
    const int side = Scale(kIconSide);
    m_packageIcon.reset(static_cast<HICON>(LoadImageW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_PACKAGE), IMAGE_ICON, side, side, LR_DEFAULTCOLOR)));
}

void PreviewPane::MakeFonts() {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    m_textFont.reset(CreateFontIndirectW(&font));
    font.lfHeight = font.lfHeight * 2;
    font.lfWeight = FW_BOLD;
    m_headingFont.reset(CreateFontIndirectW(&font));
}

// Painted in memory first, so that nothing flickers while the window is being sized.
void PreviewPane::OnPaint() {
    PAINTSTRUCT paint = {};
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT area = {};
    GetClientRect(Handle(), &area);
    const common::UniqueMemoryDc memory(CreateCompatibleDC(dc));
    const common::UniqueBitmap surface(
        CreateCompatibleBitmap(dc, std::max(1L, area.right), std::max(1L, area.bottom)));
    {
        const SavedState saved(memory.get());
        SelectObject(memory.get(), surface.get());
        Paint(memory.get(), area);
        BitBlt(dc, 0, 0, area.right, area.bottom, memory.get(), 0, 0, SRCCOPY);
    }
    EndPaint(Handle(), &paint);
}

void PreviewPane::Paint(HDC dc, const RECT& area) const {
    Fill(dc, area, kBackground);
    RECT inner = area;
    InflateRect(&inner, -Scale(kMargin), -Scale(kMargin));
    if (inner.right <= inner.left || inner.bottom <= inner.top) {
        return;
    }
    if (m_hasPackage) {
        PaintPackage(dc, inner);
    } else {
        PaintInvitation(dc, inner);
    }
}

void PreviewPane::PaintInvitation(HDC dc, const RECT& area) const {
    const int side = Scale(kIconSide);
    const int middle = (area.top + area.bottom) / 2;
    const int left = (area.left + area.right - side) / 2;
    DrawIconEx(dc, left, middle - side - Scale(kMargin), m_packageIcon.get(), side, side, 0, nullptr,
               DI_NORMAL);
    WriteCentred(dc, m_textFont.get(), kInvitation, area);
}

void PreviewPane::PaintPackage(HDC dc, const RECT& area) const {
    constexpr UINT kLine = DT_SINGLELINE | DT_END_ELLIPSIS;
    RECT rest = area;
    rest.top += Write(dc, m_headingFont.get(), kHeading, m_summary.name, rest, kLine);
    for (const std::wstring& line : {m_summary.version, m_summary.lastChange}) {
        if (!line.empty()) {
            rest.top += Scale(4) + Write(dc, m_textFont.get(), kText, line,
                                         {rest.left, rest.top + Scale(4), rest.right, rest.bottom}, kLine);
        }
    }
    rest.top += Scale(kMargin) / 2;
    if (rest.bottom > rest.top) {
        PaintPicture(dc, rest);
    }
}

void PreviewPane::PaintPicture(HDC dc, const RECT& area) const {
    Fill(dc, area, kCardEdge);
    RECT card = area;
    InflateRect(&card, -1, -1);
    Fill(dc, card, kCard);
    InflateRect(&card, -Scale(kMargin) / 2, -Scale(kMargin) / 2);
    if (card.right <= card.left || card.bottom <= card.top) {
        return;
    }
    BITMAP bitmap = {};
    if (!m_picture || !GetObjectW(m_picture.get(), sizeof bitmap, &bitmap)) {
        WriteCentred(dc, m_textFont.get(), kNoPreview, card);
        return;
    }
    const RECT place = Fit({bitmap.bmWidth, bitmap.bmHeight}, card);
    const common::UniqueMemoryDc source(CreateCompatibleDC(dc));
    const SavedState savedSource(source.get());
    const SavedState saved(dc);
    SelectObject(source.get(), m_picture.get());
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    StretchBlt(dc, place.left, place.top, place.right - place.left, place.bottom - place.top, source.get(), 0,
               0, bitmap.bmWidth, bitmap.bmHeight, SRCCOPY);
}

} // namespace viewer
