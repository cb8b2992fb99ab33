// The properties popup of the built control, worked with real mouse and keyboard.
#include "ControlClient.h"
#include "PackageBuilder.h"
#include "RealMouse.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr int kRightOfFrame = 600; // right of the frame
constexpr int kDescription = 1037;
constexpr int kName = 1033;
constexpr int kPath = 1034;
constexpr int kSize = 1035;
constexpr int kBrowse = 1036;

class PopupTest : public testing::Test {
protected:
    void SetUp() override {
        client.CallNumbers(L"OnSizeChange", {kRightOfFrame, 620});
        client.Call(L"LoadFile", {package.Path(), L""});
    }

    void ClickItem(int list, int item) {
        RECT rect = {};
        rect.left = LVIR_LABEL;
        SendMessageW(client.Item(list), LVM_GETITEMRECT, static_cast<WPARAM>(item),
                     reinterpret_cast<LPARAM>(&rect));
        client.Click(client.Item(list), rect.left + 10, (rect.top + rect.bottom) / 2);
    }

    static HWND Popup() { return FindWindowW(L"#32770", L"Document Properties"); }
    static HWND Item(int id) { return GetDlgItem(Popup(), id); }

    static std::wstring Text(int id) {
        wchar_t text[400] = L"";
        GetWindowTextW(Item(id), text, ARRAYSIZE(text));
        return text;
    }

    static void Key(WORD key) {
        INPUT inputs[2] = {};
        inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
        inputs[0].ki.wVk = inputs[1].ki.wVk = key;
        inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(2, inputs, sizeof inputs[0]);
    }

    /// Why a click did not reach the description.
    static std::string Obstacle() {
        POINT mouse = {};
        RECT place = {};
        GetCursorPos(&mouse);
        GetWindowRect(Item(kDescription), &place);
        std::ostringstream text;
        text << "popup " << Popup() << " in front " << GetForegroundWindow() << " focus " << GetFocus()
             << " mouse " << mouse.x << "," << mouse.y << " over " << WindowFromPoint(mouse)
             << " description " << Item(kDescription) << " at " << place.left << "," << place.top << " to "
             << place.right << "," << place.bottom;
        return text.str();
    }

    /// Clicks into the description, goes to its end and presses a key.
    void TypeAtTheEnd(WORD key) {
        client.Click(Item(kDescription), 20, 10);
        ASSERT_TRUE(PumpUntil([] { return GetFocus() == Item(kDescription); })) << Obstacle();
        Key(VK_END);
        Key(key);
    }

    [[nodiscard]] bool FileHolds(const std::string& line) const {
        return package.Folder().Read(L"pkg\\mxinfo.ini").find(line + "\r\n") != std::string::npos;
    }

    [[nodiscard]] bool IsSaveOn() const { return IsWindowEnabled(client.Item(kSaveButton)) != FALSE; }

    ComApartment apartment;
    PackageBuilder package;
    ControlClient client;
};

} // namespace

TEST_F(PopupTest, AClickOnADocumentShowsIt) {
    const struct {
        int list;
        int item;
        const wchar_t* name;
        const wchar_t* size;
        const wchar_t* description;
        bool linked;
    } documents[] = {{kPartList, 0, L"bracket.sldprt", L"2 KB", L"The part", true},
                     {kGCodeList, 1, L"op20", L"0 KB", L"", false},
                     {kSetupList, 0, L"a.PDF", L"5 KB", L"", false},
                     {kAdditionalList, 0, L"certificate.pdf", L"1 KB", L"Certificate", true},
                     {kAdditionalList, 2, L"plan.txt", L"1 KB", L"Plan", false}};
    HWND before = nullptr;
    for (const auto& document : documents) {
        ClickItem(document.list, document.item); // closes the popup before with the same click
        ASSERT_TRUE(Popup()) << document.list;
        EXPECT_NE(Popup(), before);
        before = Popup();
        EXPECT_TRUE(IsWindowVisible(before));
        EXPECT_EQ(Text(kName), document.name);
        EXPECT_EQ(Text(kSize), document.size);
        EXPECT_EQ(Text(kDescription), document.description);
        EXPECT_EQ(Text(kPath).empty(), !document.linked);
        EXPECT_EQ(IsWindowEnabled(Item(kBrowse)) != FALSE, document.linked);
        EXPECT_EQ(IsWindowEnabled(client.Item(kDeleteButton)) != FALSE, document.list == kAdditionalList);
    }
}

TEST_F(PopupTest, StandsBesideTheControl) {
    ClickItem(kPartList, 0);
    RECT rect = {};
    GetWindowRect(Popup(), &rect);
    EXPECT_EQ(rect.left, kRightOfFrame + 6);
    EXPECT_EQ(rect.top, 180);
}

TEST_F(PopupTest, ATypedCharacterIsInTheFileAndCanBeSaved) {
    ClickItem(kPartList, 0);
    EXPECT_FALSE(IsSaveOn());
    TypeAtTheEnd('7');
    EXPECT_TRUE(PumpUntil([this] { return IsSaveOn(); }));
    EXPECT_TRUE(FileHolds("CADFileDescription=The part7"));
    EXPECT_EQ(Text(kDescription), L"The part7");
}

TEST_F(PopupTest, GCodeFilesShareTheirDescription) {
    ClickItem(kGCodeList, 0);
    TypeAtTheEnd('7');
    EXPECT_TRUE(PumpUntil([this] { return FileHolds("GCodeFileDescription=7"); }));
    ClickItem(kGCodeList, 1);
    EXPECT_EQ(Text(kName), L"op20");
    EXPECT_EQ(Text(kDescription), L"7");
}

TEST_F(PopupTest, AClickOnAnEmptyPlaceClosesIt) {
    ClickItem(kPartList, 0);
    ASSERT_TRUE(Popup());
    client.Click(client.Dialog(), 5, 5);
    EXPECT_FALSE(Popup());
    EXPECT_FALSE(IsSaveOn());
}

TEST_F(PopupTest, AnOlderPackageCannotBeEdited) {
    package.WriteInformation(package.Information("2020"));
    client.Call(L"LoadFile", {package.Path(), L""});
    ClickItem(kPartList, 0);
    EXPECT_EQ(Text(kName), L"bracket.sldprt");
    for (const int id : {kPath, kBrowse, kDescription}) {
        EXPECT_FALSE(IsWindowEnabled(Item(id))) << id;
    }
}

TEST_F(PopupTest, ClearingLeavesNothingToClick) {
    client.Call(L"ClearAllData");
    client.Click(client.Item(kPartList), 30, 30);
    EXPECT_FALSE(Popup());
}
