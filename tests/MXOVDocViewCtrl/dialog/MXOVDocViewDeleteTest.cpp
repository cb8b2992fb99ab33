// What "x" does.
#include "ActionsFixture.h"

#include "ImportHook.h"

#include <functional>

using namespace docview;

namespace {

std::function<void(const std::wstring&)> onDelete;

BOOL WINAPI RecordDelete(LPCWSTR path) {
    onDelete(path);
    return TRUE;
}

/// How a list arranged its icons.
std::vector<WPARAM> arranged;

LRESULT CALLBACK WatchArranging(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*number*/,
                                DWORD_PTR /*data*/) {
    if (message == LVM_ARRANGE) {
        arranged.push_back(wParam);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

using MXOVDocViewDeleteTest = ActionsFixture;

TEST_F(MXOVDocViewDeleteTest, DeleteRemovesSectionCopyItemAndRecord) {
    m_package.Write(L"ReferanceFiles\\copy.txt", "x");
    Describe("[REFERANCE_FILE_1]\nFilePath=C:\\a\\one\n"
             "[REFERANCE_FILE_2]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\copy.txt\n"
             "[REFERANCE_FILE_3]\nFilePath=C:\\a\\three\n");
    Load();
    RemoveAdditional(1);
    EXPECT_EQ(Sections(), (std::vector<std::wstring>{L"REFERANCE_FILE_1", L"REFERANCE_FILE_3"}));
    EXPECT_FALSE(Exists(L"ReferanceFiles\\copy.txt"));
    const std::vector<ShownRow> rows = Rows(IDC_ADDITIONAL_LIST);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].name, L"one");
    EXPECT_EQ(rows[1].name, L"three");
    ASSERT_EQ(additionalRecords.size(), 2U);
    EXPECT_EQ(additionalRecords[1].fileName, L"three");
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
}

TEST_F(MXOVDocViewDeleteTest, DeleteTakesTheSectionBeforeTheCopy) {
    Describe("[REFERANCE_FILE_1]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\plan.txt\n");
    Load();
    std::vector<std::wstring> deleted;
    onDelete = [&](const std::wstring& path) {
        deleted.push_back(path);
        EXPECT_TRUE(Sections().empty());
    };
    const ImportHook hook("DeleteFileW", RecordDelete);
    ASSERT_TRUE(hook.Real());
    RemoveAdditional(0);
    EXPECT_EQ(deleted, (std::vector<std::wstring>{m_package / L"ReferanceFiles\\plan.txt"}));
}

TEST_F(MXOVDocViewDeleteTest, DeleteArrangesTheIcons) {
    Describe("[REFERANCE_FILE_1]\nFilePath=C:\\a\\one\n[REFERANCE_FILE_2]\nFilePath=C:\\a\\two\n");
    Load();
    arranged.clear();
    ASSERT_TRUE(SetWindowSubclass(Item(IDC_ADDITIONAL_LIST), WatchArranging, 0, 0));
    RemoveAdditional(0);
    RemoveWindowSubclass(Item(IDC_ADDITIONAL_LIST), WatchArranging, 0);
    EXPECT_EQ(arranged, std::vector<WPARAM>{LVA_DEFAULT});
}

TEST_F(MXOVDocViewDeleteTest, DeleteLeavesTheFileOfALinkedDocument) {
    const std::wstring path = m_elsewhere.Write(L"link.txt", "x");
    Describe("[REFERANCE_FILE_1]\nFilePath=" + std::string(path.begin(), path.end()) + "\n");
    Load();
    RemoveAdditional(0);
    EXPECT_TRUE(Sections().empty());
    EXPECT_EQ(m_elsewhere.Read(L"link.txt"), "x");
}

TEST_F(MXOVDocViewDeleteTest, DeleteLeavesACopyOutsideThePackageFolder) {
    const std::wstring outside = m_elsewhere.Write(L"thesis.docx", "years of work");
    const std::wstring folder = m_elsewhere.Path().substr(m_elsewhere.Path().rfind(L'\\') + 1);
    Describe("[REFERANCE_FILE_1]\nIsReferencedFile=NO\nFilePath=..\\" +
             std::string(folder.begin(), folder.end()) +
             "\\thesis.docx\n[REFERANCE_FILE_2]\nFilePath=C:\\a\\two\n");
    Load();
    ASSERT_EQ(m_package.Path().substr(0, m_package.Path().rfind(L'\\')),
              m_elsewhere.Path().substr(0, m_elsewhere.Path().rfind(L'\\')));
    RemoveAdditional(0);
    EXPECT_EQ(m_elsewhere.Read(L"thesis.docx"), "years of work") << outside;
    EXPECT_EQ(Sections(), (std::vector<std::wstring>{L"REFERANCE_FILE_2"}));
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST).size(), 1U);
}

TEST_F(MXOVDocViewDeleteTest, DeleteWithoutASelectionDoesNothing) {
    Describe("[REFERANCE_FILE_1]\nFilePath=C:\\a\\one\n");
    Load();
    Command(IDC_DELETE);
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST).size(), 1U);
    EXPECT_EQ(Sections().size(), 1U);
    EXPECT_FALSE(IsEnabled(IDC_SAVE));
}

TEST_F(MXOVDocViewDeleteTest, ADocumentDeletedInTheLoadThatAddedItComesBack) {
    m_package.Write(L"ReferanceFiles\\other", "");
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
    Load();
    Add(m_elsewhere.Write(L"notes.txt", "x"), false);
    RemoveAdditional(0);
    EXPECT_TRUE(Rows(IDC_ADDITIONAL_LIST).empty());
    EXPECT_EQ(m_package.Read(L"ReferanceFiles\\notes.txt"), "x");
    EXPECT_EQ(m_elsewhere.Read(L"notes.txt"), "x");
    Load();
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST).size(), 1U);
}

TEST_F(MXOVDocViewDeleteTest, TwoCopiesOfOneFileShareItAndLoseItTogether) {
    m_package.Write(L"ReferanceFiles\\other", "");
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
    Load();
    const std::wstring path = m_elsewhere.Write(L"notes.txt", "x");
    Add(path, false);
    Add(path, false);
    EXPECT_EQ(Sections(), (std::vector<std::wstring>{L"REFERANCE_FILE_1", L"REFERANCE_FILE_2"}));
    EXPECT_EQ(Stored(L"REFERANCE_FILE_2", L"FilePath"), L"ReferanceFiles\\notes.txt");
    Load();
    RemoveAdditional(0);
    EXPECT_FALSE(Exists(L"ReferanceFiles\\notes.txt"));
    ASSERT_EQ(Rows(IDC_ADDITIONAL_LIST).size(), 1U);
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST)[0].image, 2);
    const MessageBoxAnswer answer(IDOK);
    DoubleClick(IDC_ADDITIONAL_LIST, 0);
    EXPECT_EQ(answer.count, 0);
}

} // namespace
