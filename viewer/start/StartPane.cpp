#include "start/StartPane.h"

#include "package/Paths.h"
#include "resources/resource.h"
#include "start/PackagePicture.h"
#include "texts/Texts.h"
#include "window/Painting.h"
#include "window/Palette.h"

#include <algorithm>

namespace viewer {

namespace {

constexpr wchar_t kStartClass[] = L"MXOVStartPane";
constexpr UINT kPictureRead = WM_APP + 1;
constexpr int kRecentLabelId = 100;
constexpr int kRecentListId = 101;
// At 96 dots per inch.
constexpr int kStartMargin = 24;
constexpr int kStartGap = 12;
constexpr int kIconSide = 48;
constexpr int kPictureSide = 96;
constexpr int kRecentLabelGap = 6;
constexpr int kOpenButtonPadding = 14;
constexpr SIZE kItemSpacing = {140, 140};
constexpr int kMostListWidth = 3 * kItemSpacing.cx + 40;

std::vector<std::wstring> LinesOf(const std::wstring& text) {
    std::vector<std::wstring> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

} // namespace

bool StartPane::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kStartClass;
    return Window::Create(windowClass, WS_EX_CONTROLPARENT, Text(IDS_INVITATION).c_str(),
                          WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

void StartPane::ShowRecent(std::vector<std::wstring> packages) {
    m_packages = std::move(packages);
    FillList();
    Arrange();
    m_nextPicture = 0;
    ReadNextPicture();
}

LRESULT StartPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return CreateParts() ? 0 : -1;
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
    case WM_CTLCOLORSTATIC: {
        const Palette palette = CurrentPalette();
        SetTextColor(reinterpret_cast<HDC>(wParam), palette.text);
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        SetDCBrushColor(reinterpret_cast<HDC>(wParam), palette.page);
        return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
    }
    case WM_SYSCOLORCHANGE:
        OnColoursChanged();
        return Default(message, wParam, lParam);
    case WM_COMMAND:
        SendToFrame(LOWORD(wParam));
        return 0;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(LVN_ITEMACTIVATE)) {
            SendToFrame(IDM_RECENT_FIRST + ListView_GetNextItem(m_list, -1, LVNI_FOCUSED));
        }
        return 0;
    case kPictureRead:
        OnPictureRead();
        return 0;
    default:
        return Default(message, wParam, lParam);
    }
}

bool StartPane::CreateParts() {
    LoadFontAndIcon();
    m_invitation = LinesOf(Text(IDS_INVITATION));
    m_button = CreatePart(L"BUTTON", Text(IDS_OPEN_A_PACKAGE), WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON,
                          IDM_FILE_OPEN);
    m_label = CreatePart(L"STATIC", Text(IDS_RECENT_PACKAGES), 0, kRecentLabelId);
    m_list = CreatePart(WC_LISTVIEWW, Text(IDS_RECENT_PACKAGES),
                        WS_TABSTOP | LVS_ICON | LVS_SINGLESEL | LVS_AUTOARRANGE | LVS_SHAREIMAGELISTS,
                        kRecentListId);
    ListView_SetExtendedListViewStyle(m_list, LVS_EX_ONECLICKACTIVATE | LVS_EX_INFOTIP);
    SetListColours();
    MakeImages();
    m_reader = std::make_unique<PictureReader>(Handle(), kPictureRead, ReadPackagePicture);
    return m_button && m_label && m_list;
}

void StartPane::LoadFontAndIcon() {
    m_font = MakeMessageFont(Dpi());
    m_lineHeight = LineHeight(Handle(), m_font.get());
    const int side = Scale(kIconSide);
    m_packageIcon.reset(static_cast<HICON>(LoadImageW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_PACKAGE), IMAGE_ICON, side, side, LR_DEFAULTCOLOR)));
}

void StartPane::OnMetricsChanged() {
    LoadFontAndIcon();
    for (const HWND part : {m_button, m_label, m_list}) {
        SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    }
    MakeImages();
    ShowRecent(std::vector(m_packages));
}

// The pictures have an edge in one of the colours.
void StartPane::OnColoursChanged() {
    SetListColours();
    MakeImages();
    ShowRecent(std::vector(m_packages));
}

void StartPane::SetListColours() const {
    ListView_SetBkColor(m_list, GetSysColor(COLOR_BTNFACE));
    ListView_SetTextBkColor(m_list, GetSysColor(COLOR_BTNFACE));
    ListView_SetTextColor(m_list, GetSysColor(COLOR_BTNTEXT));
}

HWND StartPane::CreatePart(const wchar_t* className, const std::wstring& text, DWORD style, int id) {
    const HWND part = CreateWindowExW(0, className, text.c_str(), WS_CHILD | WS_CLIPSIBLINGS | style, 0, 0, 0,
                                      0, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                      GetModuleHandleW(nullptr), nullptr);
    SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    return part;
}

// The first image stands for packages without a picture, or whose picture is not read yet. An image of 24
// bits has no transparency: that of a picture would also show through the card around it.
void StartPane::MakeImages() {
    const int side = Scale(kPictureSide);
    ListView_SetImageList(m_list, nullptr, LVSIL_NORMAL);
    m_images.reset(ImageList_Create(side, side, ILC_COLOR24, 1, 8));
    AddImage(nullptr);
    ListView_SetImageList(m_list, m_images.get(), LVSIL_NORMAL);
    SendMessageW(m_list, LVM_SETICONSPACING, 0, MAKELPARAM(Scale(kItemSpacing.cx), Scale(kItemSpacing.cy)));
}

// A picture on a card, or the icon of packages for null. Returns its index.
int StartPane::AddImage(HBITMAP picture) {
    const int side = Scale(kPictureSide);
    const RECT area = {0, 0, side, side};
    const Palette palette = CurrentPalette();
    const HDC screen = GetDC(Handle());
    const common::UniqueMemoryDc dc(CreateCompatibleDC(screen));
    const common::UniqueBitmap image(CreateCompatibleBitmap(screen, side, side));
    ReleaseDC(Handle(), screen);
    {
        const SavedState saved(dc.get());
        SelectObject(dc.get(), image.get());
        Fill(dc.get(), area, palette.cardEdge);
        const RECT card = {1, 1, side - 1, side - 1};
        Fill(dc.get(), card, palette.card);
        if (picture) {
            DrawPicture(dc.get(), picture, card);
        } else {
            const int icon = Scale(kIconSide);
            DrawIconEx(dc.get(), (side - icon) / 2, (side - icon) / 2, m_packageIcon.get(), icon, icon, 0,
                       nullptr, DI_NORMAL);
        }
    }
    return ImageList_Add(m_images.get(), image.get(), nullptr);
}

void StartPane::FillList() {
    ListView_DeleteAllItems(m_list);
    ImageList_SetImageCount(m_images.get(), 1);
    for (int i = 0; i < static_cast<int>(m_packages.size()); ++i) {
        std::wstring name = FileStem(m_packages[static_cast<std::size_t>(i)]);
        LVITEMW item = {};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = i;
        item.pszText = name.data();
        SendMessageW(m_list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    ListView_SetItemState(m_list, 0, LVIS_FOCUSED, LVIS_FOCUSED); // where keys begin
    const int show = m_packages.empty() ? SW_HIDE : SW_SHOWNA;
    ShowWindow(m_label, show);
    ShowWindow(m_list, show);
}

// One at a time, so that those that come quickly are shown at once.
void StartPane::ReadNextPicture() {
    if (m_nextPicture < m_packages.size()) {
        m_reader->Ask(m_packages[m_nextPicture]);
    } else {
        m_reader->Cancel();
    }
}

void StartPane::OnPictureRead() {
    const std::optional<common::UniqueBitmap> picture = m_reader->Take();
    if (!picture) {
        return;
    }
    if (*picture) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = static_cast<int>(m_nextPicture);
        item.iImage = AddImage(picture->get());
        SendMessageW(m_list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    ++m_nextPicture;
    ReadNextPicture();
}

// From top to bottom on one axis: icon, invitation, button, and the recent packages.
void StartPane::Arrange() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    const int gap = Scale(kStartGap);
    const SIZE button = ButtonSize();
    const int invitation = static_cast<int>(m_invitation.size()) * m_lineHeight;
    const int height = Scale(kIconSide) + gap + invitation + gap + static_cast<int>(button.cy);
    m_axis = static_cast<int>(area.right) / 2;
    m_top = Scale(kStartMargin);
    if (m_packages.empty()) {
        m_top = std::max(m_top, static_cast<int>(area.bottom - height) / 2);
    }
    const int bottom = m_top + height;
    MoveWindow(m_button, m_axis - button.cx / 2, bottom - button.cy, button.cx, button.cy, TRUE);
    ArrangeRecent(area, bottom + Scale(kStartMargin));
    InvalidateRect(Handle(), nullptr, FALSE);
}

void StartPane::ArrangeRecent(const RECT& area, int top) {
    const int margin = Scale(kStartMargin);
    const int width = std::clamp(static_cast<int>(area.right) - 2 * margin, 0, Scale(kMostListWidth));
    const int left = m_axis - width / 2;
    const int label = m_lineHeight + Scale(kRecentLabelGap);
    const int height = std::max(0, static_cast<int>(area.bottom) - top - label - Scale(kStartGap));
    MoveWindow(m_label, left, top, width, label, TRUE);
    MoveWindow(m_list, left, top + label, width, height, TRUE);
}

SIZE StartPane::ButtonSize() const {
    const SIZE size = TextSize(Handle(), m_font.get(), Text(IDS_OPEN_A_PACKAGE));
    return {size.cx + 2 * Scale(kOpenButtonPadding), size.cy + Scale(kOpenButtonPadding)};
}

void StartPane::Paint(HDC dc, const RECT& area) const {
    const Palette palette = CurrentPalette();
    const int side = Scale(kIconSide);
    Fill(dc, area, palette.page);
    DrawIconEx(dc, m_axis - side / 2, m_top, m_packageIcon.get(), side, side, 0, nullptr, DI_NORMAL);
    int top = m_top + side + Scale(kStartGap);
    for (const std::wstring& line : m_invitation) {
        WriteOnAxis(dc, m_font.get(), palette.text, line, m_axis, top);
        top += m_lineHeight;
    }
}

// Posted: the command may change this page.
void StartPane::SendToFrame(int command) const {
    PostMessageW(GetAncestor(Handle(), GA_ROOT), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

} // namespace viewer
