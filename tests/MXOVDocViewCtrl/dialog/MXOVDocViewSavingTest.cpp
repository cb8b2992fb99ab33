#include "DialogFixture.h"

#include "ImportHook.h"
#include "shell/HostText.h"

using namespace docview;

namespace {

int answered = 0;

int WINAPI Answer(HWND /*owner*/, LPCWSTR /*text*/, LPCWSTR /*title*/, UINT /*style*/) {
    return answered;
}

class MXOVDocViewSavingTest : public DialogFixture {
protected:
    void SetUp() override {
        Create();
        Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
        Load();
        m_dialog.SetPackageFile(m_target / L"package.mxov");
    }

    bool WasRegenerated() const { return !m_target.Read(L"package.mxov").empty(); }

    TempFolder m_target;
};

TEST_F(MXOVDocViewSavingTest, UpdateEnablesSaveAndWritesNothing) {
    const std::string before = m_package.Read(L"mxinfo.ini");
    Command(IDC_UPDATE);
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), before);
    EXPECT_FALSE(WasRegenerated());
}

TEST_F(MXOVDocViewSavingTest, UpdateAlsoComesAsAPostedCommandOfTheButton) {
    m_dialog.PostMessage(WM_COMMAND, IDC_UPDATE, reinterpret_cast<LPARAM>(Item(IDC_UPDATE)));
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
    }
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
}

TEST_F(MXOVDocViewSavingTest, SaveRebuildsThePackageAndDisablesItself) {
    Command(IDC_UPDATE);
    const HCURSOR before = GetCursor();
    Command(IDC_SAVE);
    EXPECT_EQ(GetCursor(), before);
    EXPECT_FALSE(IsEnabled(IDC_SAVE));
    EXPECT_TRUE(WasRegenerated());
    const std::string information = m_package.Read(L"mxinfo.ini");
    const std::wstring operation = HostText(148);
    EXPECT_NE(information.find("Operation=" + std::string(operation.begin(), operation.end())),
              std::string::npos)
        << information;
}

TEST_F(MXOVDocViewSavingTest, CloseAsksNothingWithoutChanges) {
    const MessageBoxAnswer answer(IDYES);
    m_dialog.SaveOnClose();
    EXPECT_EQ(answer.count, 0);
    EXPECT_FALSE(WasRegenerated());
}

TEST_F(MXOVDocViewSavingTest, CloseAsksAndRebuildsOnYesAndStaysModified) {
    Command(IDC_UPDATE);
    const MessageBoxAnswer answer(IDYES);
    m_dialog.SaveOnClose();
    EXPECT_EQ(answer.count, 1);
    EXPECT_EQ(answer.title, L"Maxtrel Orvando Document Manager");
    EXPECT_EQ(answer.text, HostText(149));
    EXPECT_TRUE(WasRegenerated());
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
    m_dialog.SaveOnClose();
    EXPECT_EQ(answer.count, 2);
}

TEST_F(MXOVDocViewSavingTest, CloseLeavesThePackageOnNo) {
    Command(IDC_UPDATE);
    const MessageBoxAnswer answer(IDNO);
    m_dialog.SaveOnClose();
    EXPECT_EQ(answer.count, 1);
    EXPECT_FALSE(WasRegenerated());
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
}

TEST_F(MXOVDocViewSavingTest, OnlyYesSaves) {
    Command(IDC_UPDATE);
    const ImportHook hook("MessageBoxW", Answer);
    ASSERT_TRUE(hook.Real());
    for (const int other : {0, IDOK, IDCANCEL, IDNO}) {
        answered = other;
        m_dialog.SaveOnClose();
        EXPECT_FALSE(WasRegenerated()) << other;
    }
    answered = IDYES;
    m_dialog.SaveOnClose();
    EXPECT_TRUE(WasRegenerated());
}

TEST_F(MXOVDocViewSavingTest, CloseStillAsksAfterClearing) {
    Command(IDC_UPDATE);
    m_dialog.ClearAll();
    const MessageBoxAnswer answer(IDNO);
    m_dialog.SaveOnClose();
    EXPECT_EQ(answer.count, 1);
}

} // namespace
