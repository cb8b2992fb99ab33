// What the popup shows.
#include "PopupFixture.h"

#include "package/RecordLists.h"
#include "shell/HostText.h"
#include "ShownRows.h"

using namespace docview;

namespace {

class MXOVPopupDlgTest : public PopupFixture {
protected:
    std::wstring Cell(int row, int column) const { return ListText(Item(IDC_HISTORY), row, column); }

    int ColumnCount() const {
        const auto header = reinterpret_cast<HWND>(SendMessageW(Item(IDC_HISTORY), LVM_GETHEADER, 0, 0));
        return static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    }

    std::wstring ColumnTitle(int column) const {
        wchar_t text[100] = L"";
        LVCOLUMNW request = {};
        request.mask = LVCF_TEXT;
        request.pszText = text;
        request.cchTextMax = ARRAYSIZE(text);
        SendMessageW(Item(IDC_HISTORY), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&request));
        return text;
    }

    HBITMAP Picture(int id) const {
        return reinterpret_cast<HBITMAP>(SendMessageW(Item(id), STM_GETIMAGE, IMAGE_BITMAP, 0));
    }

    std::wstring SizeOfBytes(unsigned long long bytes) {
        gCodeRecords[0].filePath = m_package.WriteSized(L"nc\\sized.nc", bytes);
        Fill(DocumentCategory::GCode);
        return Text(IDC_DOCUMENT_SIZE);
    }
};

std::wstring ClassOf(HWND window) {
    wchar_t name[40] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name;
}

} // namespace

TEST_F(MXOVPopupDlgTest, TheTemplateHasItsControls) {
    Fill(DocumentCategory::PartAssembly);
    const struct {
        int id;
        const wchar_t* kind;
    } controls[] = {{1048, L"Button"},        {1031, L"Static"}, {1046, L"Static"}, {1047, L"Button"},
                    {1032, L"SysListView32"}, {1030, L"Button"}, {1042, L"Static"}, {1033, L"Static"},
                    {1043, L"Static"},        {1034, L"Edit"},   {1036, L"Button"}, {1044, L"Static"},
                    {1035, L"Static"},        {1045, L"Static"}, {1037, L"Edit"},   {1049, L"Static"}};
    for (const auto& control : controls) {
        EXPECT_EQ(ClassOf(Item(control.id)), control.kind) << control.id;
    }
    EXPECT_EQ(Text(1036), L"...");
    EXPECT_EQ(Text(1048), L"Preview");
    EXPECT_EQ(Text(1047), L"History");
    RECT wanted = {181, 3, 15, 13}; // place and size, which the system rounds each for itself
    MapDialogRect(Popup(), &wanted);
    wanted.right += wanted.left;
    wanted.bottom += wanted.top;
    RECT icon = {};
    GetWindowRect(Item(IDC_HELP_ICON), &icon);
    MapWindowPoints(nullptr, Popup(), reinterpret_cast<POINT*>(&icon), 2);
    EXPECT_TRUE(EqualRect(&wanted, &icon));
    RECT client = {0, 0, 210, 285};
    MapDialogRect(Popup(), &client);
    RECT shown = {};
    GetClientRect(Popup(), &shown);
    EXPECT_TRUE(EqualRect(&client, &shown));
}

TEST_F(MXOVPopupDlgTest, LabelsComeFromTheHostAndFitRightAligned) {
    Fill(DocumentCategory::PartAssembly);
    const struct {
        int id;
        const wchar_t* text;
    } labels[] = {{IDC_NAME_LABEL, L"Name : "},
                  {IDC_PATH_LABEL, L"Path : "},
                  {IDC_SIZE_LABEL, L"Size : "},
                  {IDC_DESCRIPTION_LABEL, L"Description : "}};
    for (const auto& label : labels) {
        EXPECT_EQ(Text(label.id), label.text);
        const HWND window = Item(label.id);
        EXPECT_EQ(GetWindowLongPtrW(window, GWL_STYLE) & SS_TYPEMASK, SS_RIGHT);
        const HDC dc = GetDC(window);
        const HGDIOBJ before =
            SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
        SIZE size = {};
        GetTextExtentPoint32W(dc, label.text, lstrlenW(label.text), &size);
        SelectObject(dc, before);
        ReleaseDC(window, dc);
        RECT client = {};
        GetClientRect(window, &client);
        EXPECT_LE(size.cx, client.right) << label.id;
        EXPECT_LE(size.cy, client.bottom) << label.id;
    }
    EXPECT_EQ(Text(IDC_PROPERTIES_BOX), L"Document Properties");
}

TEST_F(MXOVPopupDlgTest, FillingAgainKeepsTheStylesOfTheHistory) {
    Fill(DocumentCategory::PartAssembly);
    SendMessageW(Item(IDC_HISTORY), LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_GRIDLINES);
    Fill(DocumentCategory::PartAssembly);
    const LRESULT styles = SendMessageW(Item(IDC_HISTORY), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    EXPECT_EQ(styles & (LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT), LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
}

TEST_F(MXOVPopupDlgTest, ThreeLinesOfADescriptionAndFourEntriesAreSeenAtOnce) {
    additionalRecords[0].description = L"First line\r\nSecond line\r\nThird line";
    Show(DocumentCategory::AdditionalDocument);
    const HWND description = Item(IDC_DESCRIPTION);
    RECT lines = {};
    SendMessageW(description, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&lines));
    const auto topOf = [description](int line) {
        const LRESULT first = SendMessageW(description, EM_LINEINDEX, static_cast<WPARAM>(line), 0);
        return HIWORD(SendMessageW(description, EM_POSFROMCHAR, static_cast<WPARAM>(first), 0));
    };
    EXPECT_GE(lines.bottom - lines.top, 3 * (topOf(1) - topOf(0)));
    EXPECT_GE(SendMessageW(Item(IDC_HISTORY), LVM_GETCOUNTPERPAGE, 0, 0), 4);
    RECT units = {0, 0, 0, 8};
    MapDialogRect(Popup(), &units);
    if (units.bottom >= 13) { // a dialog font for Japanese is lower, and so is the place of the preview
        RECT picture = {};
        GetClientRect(Item(IDC_PREVIEW), &picture);
        EXPECT_GE(picture.bottom, 125) << "the preview is shown whole";
    }
}

TEST_F(MXOVPopupDlgTest, TabFollowsTheEyeAndLabelsPrecedeTheirFields) {
    Fill(DocumentCategory::PartAssembly);
    const int order[] = {IDC_HISTORY, IDC_DOCUMENT_PATH, IDC_BROWSE, IDC_DESCRIPTION, IDC_HISTORY};
    HWND window = Item(order[0]);
    for (const int id : order) {
        EXPECT_EQ(GetDlgCtrlID(window), id);
        window = GetNextDlgTabItem(Popup(), window, FALSE);
    }
    EXPECT_EQ(GetWindow(Item(IDC_DOCUMENT_PATH), GW_HWNDPREV), Item(IDC_PATH_LABEL));
    EXPECT_EQ(GetWindow(Item(IDC_DESCRIPTION), GW_HWNDPREV), Item(IDC_DESCRIPTION_LABEL));
}

TEST_F(MXOVPopupDlgTest, ALinkedDocumentCanBePointedElsewhere) {
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(Text(IDC_DOCUMENT_NAME), L"Bracket & Arm.SldPrt");
    EXPECT_EQ(Text(IDC_DOCUMENT_PATH), partAssemblyRecords[0].filePath);
    EXPECT_EQ(Text(IDC_DOCUMENT_SIZE), L"2 KB");
    EXPECT_EQ(Text(IDC_DESCRIPTION), L"The part");
    for (const int id : {IDC_DOCUMENT_PATH, IDC_BROWSE, IDC_DESCRIPTION}) {
        EXPECT_TRUE(IsEnabled(id)) << id;
    }
    EXPECT_TRUE(GetWindowLongPtrW(Item(IDC_DOCUMENT_PATH), GWL_STYLE) & ES_READONLY);
    EXPECT_TRUE(GetWindowLongPtrW(Item(IDC_DOCUMENT_NAME), GWL_STYLE) & SS_NOPREFIX);
}

TEST_F(MXOVPopupDlgTest, ADocumentOfThePackageHasNoPath) {
    const struct {
        DocumentCategory category;
        int index;
        const wchar_t* name;
        const wchar_t* size;
        const wchar_t* description;
    } documents[] = {{DocumentCategory::GCode, 1, L"op20.nc", L"1 KB", L"Three steps"},
                     {DocumentCategory::SetupSheets, 0, L"setup.html", L"0 KB", L"One sheet"},
                     {DocumentCategory::AdditionalDocument, 1, L"plan.txt", L"3 KB", L"Plan"}};
    for (const auto& document : documents) {
        MXOVPopupDlg::CloseOf(m_owner);
        Fill(document.category, document.index);
        EXPECT_EQ(Text(IDC_DOCUMENT_NAME), document.name);
        EXPECT_EQ(Text(IDC_DOCUMENT_PATH), L"");
        EXPECT_EQ(Text(IDC_DOCUMENT_SIZE), document.size);
        EXPECT_EQ(Text(IDC_DESCRIPTION), document.description);
        EXPECT_FALSE(IsEnabled(IDC_DOCUMENT_PATH));
        EXPECT_FALSE(IsEnabled(IDC_BROWSE));
        EXPECT_TRUE(IsEnabled(IDC_DESCRIPTION));
    }
}

TEST_F(MXOVPopupDlgTest, AnOlderPackageCannotBeEdited) {
    Fill(DocumentCategory::PartAssembly, 0, false);
    EXPECT_EQ(Text(IDC_DOCUMENT_PATH), partAssemblyRecords[0].filePath);
    for (const int id : {IDC_DOCUMENT_PATH, IDC_BROWSE, IDC_DESCRIPTION}) {
        EXPECT_FALSE(IsEnabled(id)) << id;
    }
    Fill(DocumentCategory::PartAssembly); // nothing enables them again
    EXPECT_FALSE(IsEnabled(IDC_DESCRIPTION));
}

TEST_F(MXOVPopupDlgTest, SizesAreRoundedUp) {
    EXPECT_EQ(SizeOfBytes(0), L"0 KB");
    EXPECT_EQ(SizeOfBytes(1), L"1 KB");
    EXPECT_EQ(SizeOfBytes(1024), L"1 KB");
    EXPECT_EQ(SizeOfBytes(1025), L"2 KB");
    gCodeRecords[0].filePath = m_package / L"gone.nc";
    Fill(DocumentCategory::GCode);
    EXPECT_EQ(Text(IDC_DOCUMENT_SIZE), L"0 KB");
}

TEST_F(MXOVPopupDlgTest, HistoryListsTheEntriesInOrder) {
    Fill(DocumentCategory::PartAssembly);
    const UINT titles[] = {hosttext::kHistoryOperation, hosttext::kHistoryTime, hosttext::kHistoryBy};
    const int widths[] = {55, 90, 80};
    ASSERT_EQ(ColumnCount(), 3);
    for (int column = 0; column < 3; ++column) {
        EXPECT_EQ(ColumnTitle(column), HostText(titles[column]));
        EXPECT_EQ(SendMessageW(Item(IDC_HISTORY), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0),
                  widths[column]);
    }
    EXPECT_TRUE(SendMessageW(Item(IDC_HISTORY), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_FULLROWSELECT);
    ASSERT_EQ(SendMessageW(Item(IDC_HISTORY), LVM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(Cell(0, 0), L"Created");
    EXPECT_EQ(Cell(0, 1), L"2024-01-01 10:00");
    EXPECT_EQ(Cell(0, 2), L"Ana");
    EXPECT_EQ(Cell(1, 0), L"Updated");
}

TEST_F(MXOVPopupDlgTest, FillingAgainAppendsTheColumnsOnceMore) {
    Fill(DocumentCategory::PartAssembly);
    const HWND first = Popup();
    Fill(DocumentCategory::GCode, 1);
    EXPECT_EQ(Popup(), first);
    ASSERT_EQ(ColumnCount(), 6);
    EXPECT_EQ(ColumnTitle(3), ColumnTitle(0));
    EXPECT_EQ(ColumnTitle(5), ColumnTitle(2));
    EXPECT_EQ(SendMessageW(Item(IDC_HISTORY), LVM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(Cell(1, 2), L"Bo");
    EXPECT_EQ(Text(IDC_DOCUMENT_NAME), L"op20.nc");
}

TEST_F(MXOVPopupDlgTest, WithoutAPreviewTheHostsPictureIsShown) {
    m_preview = m_package / L"none.bmp";
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(Text(IDC_PREVIEW_STATUS), HostText(hosttext::kNoPreview));
    BITMAP bitmap = {};
    EXPECT_TRUE(GetObjectW(Picture(IDC_PREVIEW), sizeof bitmap, &bitmap));
    EXPECT_TRUE(GetObjectW(Picture(IDC_HELP_ICON), sizeof bitmap, &bitmap));
    for (const int id : {IDC_PREVIEW, IDC_HELP_ICON}) {
        const auto style = GetWindowLongPtrW(Item(id), GWL_STYLE);
        EXPECT_EQ(style & SS_TYPEMASK, SS_BITMAP);
        EXPECT_TRUE(style & SS_CENTERIMAGE);
    }
    EXPECT_TRUE(GetWindowLongPtrW(Item(IDC_HELP_ICON), GWL_STYLE) & SS_NOTIFY);
}

TEST_F(MXOVPopupDlgTest, StandsBesideTheControlOnePixelShort) {
    Fill(DocumentCategory::PartAssembly);
    EXPECT_FALSE(IsWindowVisible(Popup()));
    RECT before = {};
    GetWindowRect(Popup(), &before);
    MXOVPopupDlg::Current()->PlaceBeside(321);
    RECT after = {};
    GetWindowRect(Popup(), &after);
    EXPECT_EQ(after.left, 327);
    EXPECT_EQ(after.top, 180);
    EXPECT_EQ(after.right - after.left, before.right - before.left);
    EXPECT_EQ(after.bottom, before.bottom - before.top + 179);
}

TEST_F(MXOVPopupDlgTest, AnUnknownCategoryShowsAndWritesNothing) {
    Fill(static_cast<DocumentCategory>(5));
    EXPECT_EQ(Text(IDC_DOCUMENT_NAME), L"<file name>");
    EXPECT_EQ(ColumnCount(), 0);
    Type(L"x");
    MXOVPopupDlg::Current()->SaveProperties();
    HandleMessages();
    EXPECT_EQ(m_owner.updates, 0);
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "");
}

TEST_F(MXOVPopupDlgTest, ItsFirstControlHasTheFocusBeforeItIsShown) {
    SetForegroundWindow(m_owner.GetSafeHwnd());
    SetFocus(m_owner.GetSafeHwnd());
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(GetFocus(), GetNextDlgTabItem(Popup(), nullptr, FALSE));
}

TEST_F(MXOVPopupDlgTest, IsWhite) {
    Fill(DocumentCategory::PartAssembly);
    const HDC dc = GetDC(Popup());
    const HWND extra =
        CreateWindowExW(0, L"Static", L"", WS_CHILD, 0, 0, 5, 5, Popup(),
                        reinterpret_cast<HMENU>(INT_PTR{IDC_HIGHLIGHT_FIRST}), nullptr, nullptr);
    const auto ask = [&](UINT message, HWND window) {
        return reinterpret_cast<HBRUSH>(
            SendMessageW(Popup(), message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
    };
    const auto white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    SetTextColor(dc, RGB(1, 2, 3));
    EXPECT_EQ(ask(WM_CTLCOLORDLG, Popup()), white);
    EXPECT_EQ(ask(WM_CTLCOLORSTATIC, Item(IDC_DOCUMENT_NAME)), white);
    EXPECT_EQ(ask(WM_CTLCOLOREDIT, Item(IDC_DESCRIPTION)), white);
    EXPECT_EQ(GetTextColor(dc), RGB(1, 2, 3));
    EXPECT_EQ(ask(WM_CTLCOLORSTATIC, extra), white);
    EXPECT_EQ(GetTextColor(dc), RGB(0, 102, 178));
    ReleaseDC(Popup(), dc);
}
