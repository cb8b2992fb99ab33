// The control while it shows a message box, a file dialog or its popup: closed, released and left alone
// meanwhile.
#include "FileDialogDriver.h"
#include "ModalControl.h"

#include <filesystem>

using ModalTest = ModalControlTest;

TEST_F(ModalTest, ClosedAndReleasedWhileTheQuestionIsUp) {
    for (const WPARAM answer : {IDNO, IDYES}) {
        Modify();
        const ModalDriver driver(
            kBoxTitle,
            [&] {
                Leave();
                EXPECT_EQ(S_FALSE, m_module.Call("DllCanUnloadNow")) << "a call is still inside";
            },
            answer);
        EXPECT_EQ(S_OK, CallClose());
        EXPECT_TRUE(driver.WasUp());
        EXPECT_EQ(answer == IDYES, std::filesystem::exists(SavedFile())) << "the answer still counts";
        ExpectNothingLeft();
        control = CreateControl();
        SetUp();
    }
}

TEST_F(ModalTest, ContainersWindowGoesWhileTheQuestionIsUp) {
    Modify();
    const ModalDriver driver(
        kBoxTitle, [&] { DestroyWindow(container.Window()); }, IDNO);
    EXPECT_EQ(S_OK, CallClose());
    EXPECT_TRUE(driver.WasUp());
    EXPECT_EQ(S_OK, CallClose()) << "no window to ask in, and no package is written unasked";
    EXPECT_FALSE(std::filesystem::exists(SavedFile()));
    Leave();
    ExpectNothingLeft();
}

TEST_F(ModalTest, ClosedAndReleasedWhileAMessageOfAnEventIsUp) {
    package.WriteInformation("[FILEINFO]\nMaxtlreVersion=Package Writer 2024\n[REFERANCE_FILE_1]\n"
                             "IsReferencedFile=YES\nFilePath=Q:\\gone.pdf\n");
    ASSERT_EQ(S_OK, Load(package.Path()));
    const ModalDriver driver(
        kBoxTitle, [&] { Leave(); }, IDOK);
    DoubleClick(kAdditionalList, 0);
    EXPECT_TRUE(driver.WasUp());
    ExpectNothingLeft();
}

TEST_F(ModalTest, ClosedAndReleasedWhileAFileIsChosen) {
    for (const bool choose : {false, true}) {
        bool left = false;
        {
            const FileDialogDriver driver([&](HWND dialog) {
                if (!std::exchange(left, true)) {
                    Leave();
                }
                choose ? FileDialogDriver::Choose(dialog, package.Path() + L"mxinfo.ini")
                       : FileDialogDriver::Cancel(dialog);
            });
            SendMessageW(Dialog(), WM_COMMAND, kAddButton, 0);
        }
        EXPECT_TRUE(left);
        ExpectNothingLeft();
        control = CreateControl();
        SetUp();
    }
}

TEST_F(ModalTest, AFileChosenAfterTheControlWasClosedIsNotAdded) {
    const std::string before = package.Folder().Read(L"pkg\\mxinfo.ini");
    for (const bool comesBack : {false, true}) {
        bool closed = false;
        {
            const FileDialogDriver driver([&](HWND dialog) {
                if (!std::exchange(closed, true)) {
                    EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_NOSAVE));
                    if (comesBack) {
                        EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
                    }
                }
                FileDialogDriver::Choose(dialog, package.Path() + L"mxinfo.ini");
            });
            SendMessageW(Dialog(), WM_COMMAND, kAddButton, 0);
        }
        EXPECT_TRUE(closed);
        EXPECT_EQ(before, package.Folder().Read(L"pkg\\mxinfo.ini"));
        if (!comesBack) {
            ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        }
        EXPECT_FALSE(IsWindowEnabled(Item(kSaveButton)));
    }
}

TEST_F(ModalTest, ClosedWhileThePopupIsUp) {
    for (const bool released : {false, true}) {
        Select(kAdditionalList, 0);
        Notify(kAdditionalList, 0, NM_CLICK);
        ASSERT_TRUE(Shown(kPopupTitle));
        if (released) {
            Leave();
        } else {
            EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_NOSAVE));
        }
        EXPECT_FALSE(FindWindowW(nullptr, kPopupTitle)) << "gone with the control's window";
        EXPECT_FALSE(container.ControlWindow());
        if (!released) {
            ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        }
    }
    ExpectNothingLeft();
}

TEST_F(ModalTest, MessageBoxesDisableTheContainerMeanwhile) {
    for (const bool closed : {false, true}) {
        Modify();
        container.ForgetCalls();
        const ModalDriver driver(
            kBoxTitle,
            [&] {
                EXPECT_EQ(1U, Count("EnableModeless(0)"));
                EXPECT_EQ(0U, Count("EnableModeless(1)"));
                if (closed) {
                    Leave();
                }
            },
            IDNO);
        EXPECT_EQ(S_OK, CallClose());
        EXPECT_TRUE(driver.WasUp());
        EXPECT_EQ(1U, Count("EnableModeless(0)"));
        EXPECT_EQ(1U, Count("EnableModeless(1)"));
    }
    ExpectNothingLeft();
}

TEST_F(ModalTest, FileDialogsDisableTheContainerMeanwhile) {
    for (const bool closed : {false, true}) {
        container.ForgetCalls();
        bool up = false;
        {
            const FileDialogDriver driver([&](HWND dialog) {
                if (!std::exchange(up, true)) {
                    EXPECT_EQ(1U, Count("EnableModeless(0)"));
                    EXPECT_EQ(0U, Count("EnableModeless(1)"));
                    if (closed) {
                        Leave();
                    }
                }
                FileDialogDriver::Cancel(dialog);
            });
            SendMessageW(Dialog(), WM_COMMAND, kAddButton, 0);
        }
        EXPECT_TRUE(up);
        EXPECT_EQ(1U, Count("EnableModeless(0)"));
        EXPECT_EQ(1U, Count("EnableModeless(1)"));
    }
    ExpectNothingLeft();
}
