// Pointing a linked document at another file, through the system's file dialog.
#include "PopupFixture.h"

#include "FileDialogCalls.h"
#include "FileDialogDriver.h"
#include "package/RecordLists.h"
#include "RealMouse.h"

#include <ole2.h>

using namespace docview;

namespace {

class MXOVPopupBrowsingTest : public PopupFixture {
protected:
    void SetUp() override { ASSERT_HRESULT_SUCCEEDED(OleInitialize(nullptr)); }
    void TearDown() override {
        MXOVPopupDlg::CloseOf(m_owner);
        OleUninitialize();
    }

    /// Presses "..." and does something with the file dialog.
    void Browse(std::function<void(HWND)> act) {
        const FileDialogDriver driver(std::move(act));
        SendMessageW(Item(IDC_BROWSE), BM_CLICK, 0, 0);
    }

    /// Whether the file dialog offers this kind of file, and no other.
    bool OffersOnly(const std::wstring& kind) {
        bool offered = false;
        Browse([&](HWND dialog) {
            for (HWND box = FindWindowExW(dialog, nullptr, L"ComboBox", nullptr); box;
                 box = FindWindowExW(dialog, box, L"ComboBox", nullptr)) {
                offered = offered || (SendMessageW(box, CB_GETCOUNT, 0, 0) == 1 && ItemText(box) == kind);
            }
            FileDialogDriver::Cancel(dialog);
        });
        return offered;
    }

    /// Presses "..." and, when `prepare` has run under the file dialog, the left button outside the popup.
    /// Whether the popup has closed then.
    bool ClosesMeanwhile(const std::function<void()>& prepare) {
        bool closed = false;
        Browse([&](HWND dialog) {
            if (!closed) {
                prepare();
                RealMouse mouse;
                const bool reached = mouse.Reach(m_owner.Other(), {5, 5});
                mouse.Click();
                closed = reached && PumpUntil([&] { return !Popup(); });
            }
            FileDialogDriver::Cancel(dialog);
        });
        return closed;
    }

private:
    static std::wstring ItemText(HWND box) {
        wchar_t text[200] = L"";
        SendMessageW(box, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(text));
        return text;
    }
};

} // namespace

TEST_F(MXOVPopupBrowsingTest, AChosenFileReplacesThePath) {
    const std::wstring chosen = m_package.WriteSized(L"outside\\other.sldprt", 3000);
    Show(DocumentCategory::PartAssembly);
    Browse([&](HWND dialog) { FileDialogDriver::Choose(dialog, chosen); });
    EXPECT_EQ(Text(IDC_DOCUMENT_NAME), L"other.sldprt");
    EXPECT_EQ(Text(IDC_DOCUMENT_PATH), chosen);
    EXPECT_EQ(Text(IDC_DOCUMENT_SIZE), L"3 KB");
    EXPECT_EQ(Text(IDC_DESCRIPTION), L"The part");
    EXPECT_EQ(Value(L"FILEINFO", L"CADFilePath"), chosen);
    EXPECT_EQ(Value(L"FILEINFO", L"CADFileDescription"), L"The part");
    EXPECT_EQ(partAssemblyRecords[0].filePath, chosen);
    EXPECT_EQ(partAssemblyRecords[0].fileName, L"Bracket & Arm.SldPrt");
    HandleMessages();
    EXPECT_EQ(m_owner.updates, 1);
}

TEST_F(MXOVPopupBrowsingTest, CancellingChangesNothing) {
    Show(DocumentCategory::AdditionalDocument);
    Browse(FileDialogDriver::Cancel);
    HandleMessages();
    EXPECT_EQ(Text(IDC_DOCUMENT_PATH), additionalRecords[0].filePath);
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "");
    EXPECT_EQ(m_owner.updates, 0);
}

TEST_F(MXOVPopupBrowsingTest, OffersFilesOfTheDocumentsKind) {
    Show(DocumentCategory::PartAssembly);
    EXPECT_TRUE(OffersOnly(L"Part File (*.SLDPRT)"));
    partAssemblyRecords[0].fileName = L"arm.sldasm";
    Show(DocumentCategory::PartAssembly);
    EXPECT_TRUE(OffersOnly(L"Assembly File (*.SLDASM)"));
    Show(DocumentCategory::AdditionalDocument);
    EXPECT_TRUE(OffersOnly(L"All Files (*.*)"));
}

TEST_F(MXOVPopupBrowsingTest, TheFileDialogOpensOverThePopup) {
    Show(DocumentCategory::PartAssembly);
    const FileDialogCalls calls;
    SendMessageW(Item(IDC_BROWSE), BM_CLICK, 0, 0);
    EXPECT_EQ(calls.shown, 1);
    EXPECT_TRUE(calls.opens);
    EXPECT_EQ(calls.owner, Popup());
    EXPECT_EQ(calls.extension, L"*");
    EXPECT_EQ(calls.name, L"");
    EXPECT_EQ(calls.types, std::vector<std::wstring>{L"Part File (*.SLDPRT)|*.sldprt"});
    EXPECT_TRUE(calls.options & FOS_OVERWRITEPROMPT);
}

TEST_F(MXOVPopupBrowsingTest, APressElsewhereMeanwhileLeavesThePopup) {
    Show(DocumentCategory::PartAssembly);
    bool pressed = false;
    Browse([&](HWND dialog) {
        if (!pressed) {
            RealMouse mouse;
            const bool reached = mouse.Reach(m_owner.Other(), {5, 5});
            mouse.Click();
            pressed = reached && PumpUntil([&] { return mouse.Delivered(2); });
        }
        FileDialogDriver::Cancel(dialog);
    });
    EXPECT_TRUE(pressed);
    ASSERT_TRUE(Popup());
    RealMouse mouse;
    ASSERT_TRUE(mouse.Reach(m_owner.Other(), {5, 5}));
    mouse.Click();
    EXPECT_TRUE(PumpUntil([&] { return !Popup(); })) << "afterwards it closes it";
}

TEST_F(MXOVPopupBrowsingTest, APopupThatIsFilledMeanwhileClosesAtAPressElsewhere) {
    Show(DocumentCategory::PartAssembly);
    EXPECT_TRUE(ClosesMeanwhile([&] { Fill(DocumentCategory::AdditionalDocument); }));
}

TEST_F(MXOVPopupBrowsingTest, AChosenPathIsReportedOnceMoreOnClosing) {
    const std::wstring chosen = m_package.WriteSized(L"outside\\other.sldprt", 1);
    Show(DocumentCategory::PartAssembly);
    Browse([&](HWND dialog) { FileDialogDriver::Choose(dialog, chosen); });
    HandleMessages();
    ASSERT_EQ(m_owner.updates, 1);
    RealMouse mouse;
    mouse.MoveTo(m_owner.Other(), {5, 5});
    mouse.Click();
    EXPECT_TRUE(PumpUntil([&] { return !Popup() && m_owner.updates == 2; }));
}
