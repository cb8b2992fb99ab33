#include "session/SessionStore.h"

#include "common/Handles.h"
#include "common/Policies.h"
#include "package/Paths.h"
#include "PolicyValue.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace viewer;

namespace {

class PackageSessionTest : public testing::Test {
protected:
    static bool CanWrite(const std::wstring& path) {
        return common::OwnFile(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                                           nullptr)) != nullptr;
    }

    TempFolder m_temporary;
    std::wstring m_error;
    SessionStore m_store{m_temporary / L"MXOVViewer"};
};

} // namespace

TEST_F(PackageSessionTest, HasAFolderOfItsOwnInTheStore) {
    const auto first = m_store.Create(L"C:\\a.mxov", m_error);
    const auto second = m_store.Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(first && second) << m_error.c_str();
    EXPECT_NE(first->Folder(), second->Folder());
    EXPECT_TRUE(first->Folder().starts_with(m_temporary.Path() + L"\\"));
    EXPECT_EQ(first->FolderWithSeparator(), first->Folder() + L"\\");
    EXPECT_EQ(first->PackageFile(), L"C:\\a.mxov");
}

TEST_F(PackageSessionTest, ItsFileNamesThePackageAndIsHeldWhileItLives) {
    auto session = m_store.Create(L"C:\\jobs\\\u00fc.mxov", m_error);
    ASSERT_TRUE(session);
    const std::wstring file = session->Folder() + L".session";
    wchar_t package[MAX_PATH] = L"";
    GetPrivateProfileStringW(L"SESSION", L"PackageFile", L"", package, MAX_PATH, file.c_str());
    EXPECT_STREQ(package, L"C:\\jobs\\\u00fc.mxov");
    EXPECT_FALSE(CanWrite(file));
    session.reset();
    EXPECT_FALSE(FileExists(file));
}

TEST_F(PackageSessionTest, NothingIsLeftAtItsEnd) {
    auto session = m_store.Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(session);
    CreateDirectoryW(session->Folder().c_str(), nullptr);
    const HANDLE file = CreateFileW((session->FolderWithSeparator() + L"a.txt").c_str(), GENERIC_WRITE, 0,
                                    nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
    session.reset();
    m_store.WaitForRemovals();
    EXPECT_EQ(m_temporary.EntryCount(), 0);
}

TEST_F(PackageSessionTest, AFolderThatAnotherViewerRemovesAtThatMomentIsMadeAgain) {
    std::atomic<bool> isDone = false;
    std::thread other([this, &isDone] {
        while (!isDone) {
            RemoveDirectoryW((m_temporary / L"MXOVViewer").c_str());
        }
    });
    for (int count = 0; count < 300; ++count) {
        EXPECT_TRUE(m_store.Create(L"C:\\a.mxov", m_error)) << m_error.c_str();
    }
    isDone = true;
    other.join();
}

TEST_F(PackageSessionTest, LeftoversAreRemovedButNotWhatACrashLeftOrAnotherViewerUses) {
    m_temporary.Write(L"MXOVViewer\\111-1\\finished.txt", "x");
    m_temporary.Write(L"MXOVViewer\\222-1\\unsaved.txt", "x");
    m_temporary.Write(L"MXOVViewer\\222-1.session", "[SESSION]\r\n");
    const auto running = m_store.Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(running && CreateDirectoryW(running->Folder().c_str(), nullptr));
    m_store.RemoveLeftovers();
    m_store.WaitForRemovals();
    EXPECT_EQ(GetFileAttributesW((m_temporary / L"MXOVViewer\\111-1").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(FileExists(m_temporary / L"MXOVViewer\\222-1\\unsaved.txt"));
    EXPECT_NE(GetFileAttributesW(running->Folder().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(PackageSessionTest, AKeptSessionIsTakenOverOnceWithWhatWasRecorded) {
    auto session = m_store.Create(L"C:\\jobs\\\u00fc.mxov", m_error);
    ASSERT_TRUE(session && CreateDirectoryW(session->Folder().c_str(), nullptr));
    session->Record(L"a stamp longer than the next one");
    session->Record(L"7-9");
    const std::wstring folder = session->Folder();
    EXPECT_TRUE(m_store.TakeOver().empty()) << "it is in use";
    session->Keep();
    session.reset();

    auto left = m_store.TakeOver();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0]->PackageFile(), L"C:\\jobs\\\u00fc.mxov");
    EXPECT_EQ(left[0]->Folder(), folder);
    EXPECT_EQ(left[0]->Stamp(), L"7-9");
    EXPECT_TRUE(m_store.TakeOver().empty());
    left.clear();
    m_store.WaitForRemovals();
    EXPECT_EQ(m_temporary.EntryCount(), 0);
}

TEST_F(PackageSessionTest, WhatWasLeftHalfUnpackedIsRemoved) {
    auto session = m_store.Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(session && CreateDirectoryW(session->Folder().c_str(), nullptr));
    session->Keep();
    session.reset();
    EXPECT_EQ(m_temporary.EntryCount(), 1);
    EXPECT_TRUE(m_store.TakeOver().empty());
    m_store.WaitForRemovals();
    EXPECT_EQ(m_temporary.EntryCount(), 0);
}

TEST_F(PackageSessionTest, TellsWhatChangedSinceTheFolderAgreedWithThePackage) {
    const TempFolder content;
    content.Write(L"mxinfo.ini", "[FILEINFO]\r\n");
    const std::wstring package = m_temporary / L"a.mxov";
    ASSERT_TRUE(mxovshare::CreatePackage(content.Path(), package).ok);
    auto session = m_store.Create(package, m_error);
    ASSERT_TRUE(session && mxovshare::UnpackPackage(package, session->Folder()).ok);
    session->Record(L"1");
    EXPECT_TRUE(session->Changes().empty());
    const auto edit = [&session](const wchar_t* name) {
        return common::OwnFile(CreateFileW((session->FolderWithSeparator() + name).c_str(), GENERIC_WRITE, 0,
                                           nullptr, CREATE_NEW, 0, nullptr)) != nullptr;
    };
    ASSERT_TRUE(edit(L"a.txt"));
    ASSERT_EQ(session->Changes().size(), 1u);
    EXPECT_EQ(session->Changes()[0].name, L"a.txt");

    // Saved, and then replaced by somebody else: that is no change of the folder.
    ASSERT_TRUE(mxovshare::CreatePackage(session->Folder(), package).ok);
    session->Record(L"2");
    EXPECT_TRUE(session->Changes().empty());
    ASSERT_TRUE(mxovshare::CreatePackage(content.Path(), package).ok);
    session->Record(L"2");
    EXPECT_TRUE(session->Changes().empty());

    // After a crash it is the package file as it is now that counts.
    session->Keep();
    session.reset();
    auto left = m_store.TakeOver();
    ASSERT_EQ(left.size(), 1u);
    left[0]->Resume();
    ASSERT_EQ(left[0]->Changes().size(), 1u);
    EXPECT_EQ(mxovshare::StampOfFolder(left[0]->Folder()), L"2");
}

TEST_F(PackageSessionTest, WhatTheViewerItselfChangedIsAccepted) {
    const TempFolder content;
    content.Write(L"mxinfo.ini", "[FILEINFO]\r\n");
    content.Write(L"old.txt", "old");
    const std::wstring package = m_temporary / L"a.mxov";
    ASSERT_TRUE(mxovshare::CreatePackage(content.Path(), package).ok);
    const auto session = m_store.Create(package, m_error);
    ASSERT_TRUE(session && mxovshare::UnpackPackage(package, session->Folder()).ok);
    session->Record(L"1");
    ASSERT_TRUE(MoveFileW((session->FolderWithSeparator() + L"old.txt").c_str(),
                          (session->FolderWithSeparator() + L"new.txt").c_str()));
    EXPECT_EQ(session->Changes().size(), 2u);
    session->Accept(L"new.txt");
    ASSERT_EQ(session->Changes().size(), 1u);
    EXPECT_EQ(session->Changes()[0].name, L"old.txt");
    session->Accept(L"old.txt");
    EXPECT_TRUE(session->Changes().empty());
}

TEST_F(PackageSessionTest, WithoutAFolderItNamesTheFolder) {
    SessionStore store(m_temporary / L"none\\none");
    EXPECT_EQ(store.Create(L"C:\\a.mxov", m_error), nullptr);
    EXPECT_NE(m_error.find(L"none"), std::wstring::npos);
}

TEST_F(PackageSessionTest, TheStoreGoesWithItsLastFolderAndComesBack) {
    m_store.Create(L"C:\\a.mxov", m_error).reset();
    m_store.WaitForRemovals();
    EXPECT_EQ(m_temporary.EntryCount(), 0);
    EXPECT_TRUE(m_store.Create(L"C:\\a.mxov", m_error)) << m_error.c_str();
}

TEST_F(PackageSessionTest, EndingASessionDoesNotWaitForTheRemoval) {
    auto session = m_store.Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(session && CreateDirectoryW(session->Folder().c_str(), nullptr));
    const std::wstring folder = session->Folder();
    for (int i = 0; i < 1000; ++i) {
        const std::wstring name = folder + L"\\" + std::to_wstring(i);
        CloseHandle(CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    }
    session.reset();
    EXPECT_TRUE(FolderExists(folder)) << "the removal takes longer than ending the session";
    m_store.WaitForRemovals();
    EXPECT_FALSE(FolderExists(folder));
}

TEST_F(PackageSessionTest, WhatAnEarlierVersionLeftElsewhereIsTakenOverAndRemoved) {
    const std::wstring earlier = m_temporary / L"earlier\\MXOVViewer";
    CreateDirectoryW((m_temporary / L"earlier").c_str(), nullptr);
    SessionStore former(earlier);
    auto session = former.Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(session && CreateDirectoryW(session->Folder().c_str(), nullptr));
    session->Record(L"7-9");
    session->Keep();
    session.reset();
    m_temporary.Write(L"earlier\\MXOVViewer\\111-1\\finished.txt", "x");

    SessionStore store(m_temporary / L"MXOVViewer", {earlier});
    store.RemoveLeftovers();
    auto left = store.TakeOver();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0]->PackageFile(), L"C:\\a.mxov");
    EXPECT_EQ(left[0]->Stamp(), L"7-9");
    EXPECT_TRUE(left[0]->Folder().starts_with(earlier));
    const auto next = store.Create(L"C:\\b.mxov", m_error);
    ASSERT_TRUE(next) << m_error.c_str();
    EXPECT_TRUE(next->Folder().starts_with(m_temporary / L"MXOVViewer"));
    left.clear();
    store.WaitForRemovals();
    EXPECT_FALSE(FolderExists(earlier));
    EXPECT_TRUE(store.TakeOver().empty());
}

TEST_F(PackageSessionTest, AnEarlierFolderThatIsTheStoresOwnCountsOnce) {
    SessionStore store(m_temporary / L"MXOVViewer", {m_temporary / L"mxovviewer"});
    auto session = store.Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(session && CreateDirectoryW(session->Folder().c_str(), nullptr));
    session->Record(L"7-9");
    session->Keep();
    session.reset();
    EXPECT_EQ(store.TakeOver().size(), 1u);
}

TEST(SessionStore, EarlierVersionsUsedTheTemporaryFolder) {
    wchar_t temporary[MAX_PATH + 1] = L"";
    GetTempPathW(ARRAYSIZE(temporary), temporary);
    EXPECT_EQ(SessionStore::EarlierFolders(),
              (std::vector{SessionStore::UserFolder(), std::wstring(temporary) + L"MXOVViewer"}));
}

TEST(SessionStore, APolicyStatesWherePackagesAreUnpacked) {
    const TempFolder folder;
    const std::wstring usual = SessionStore::UserFolder();
    {
        const PolicyValue policy(common::kUnpackFolderPolicy, folder / L"a\\b");
        EXPECT_EQ(SessionStore::UserFolder(), folder / L"a\\b\\MXOVViewer");
        EXPECT_TRUE(FolderExists(folder / L"a\\b"));
        EXPECT_EQ(SessionStore::EarlierFolders().front(), usual) << "what was left there is offered still";
    }
    EXPECT_EQ(SessionStore::UserFolder(), usual);
}

TEST(SessionStore, TheUsersFolderIsNotATemporaryOne) {
    wchar_t temporary[MAX_PATH + 1] = L"";
    GetTempPathW(ARRAYSIZE(temporary), temporary);
    EXPECT_FALSE(SessionStore::UserFolder().starts_with(temporary));
    EXPECT_TRUE(FolderExists(ParentFolder(SessionStore::UserFolder())));
}
