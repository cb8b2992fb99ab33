#include "package/PackageSession.h"

#include "common/Handles.h"
#include "package/Paths.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

// The user's temporary folder is a folder of the test's own meanwhile.
class PackageSessionTest : public testing::Test {
protected:
    PackageSessionTest() {
        GetEnvironmentVariableW(L"TMP", m_oldTemporary, ARRAYSIZE(m_oldTemporary));
        SetEnvironmentVariableW(L"TMP", m_temporary.Path().c_str());
    }
    ~PackageSessionTest() override { SetEnvironmentVariableW(L"TMP", m_oldTemporary); }

    static bool CanWrite(const std::wstring& path) {
        return common::OwnFile(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                                           nullptr)) != nullptr;
    }

    TempFolder m_temporary;
    std::wstring m_error;
    wchar_t m_oldTemporary[MAX_PATH] = L"";
};

} // namespace

TEST_F(PackageSessionTest, HasAFolderOfItsOwnBelowTheTemporaryOne) {
    const auto first = PackageSession::Create(L"C:\\a.mxov", m_error);
    const auto second = PackageSession::Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(first && second) << m_error.c_str();
    EXPECT_NE(first->Folder(), second->Folder());
    EXPECT_TRUE(first->Folder().starts_with(m_temporary.Path() + L"\\"));
    EXPECT_EQ(first->FolderWithSeparator(), first->Folder() + L"\\");
    EXPECT_EQ(first->PackageFile(), L"C:\\a.mxov");
}

TEST_F(PackageSessionTest, ItsFileNamesThePackageAndIsHeldWhileItLives) {
    auto session = PackageSession::Create(L"C:\\jobs\\\u00fc.mxov", m_error);
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
    auto session = PackageSession::Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(session);
    CreateDirectoryW(session->Folder().c_str(), nullptr);
    const HANDLE file = CreateFileW((session->FolderWithSeparator() + L"a.txt").c_str(), GENERIC_WRITE, 0,
                                    nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
    session.reset();
    EXPECT_EQ(m_temporary.EntryCount(), 0);
}

TEST_F(PackageSessionTest, LeftoversAreRemovedButNotWhatACrashLeftOrAnotherViewerUses) {
    m_temporary.Write(L"MXOVViewer\\111-1\\finished.txt", "x");
    m_temporary.Write(L"MXOVViewer\\222-1\\unsaved.txt", "x");
    m_temporary.Write(L"MXOVViewer\\222-1.session", "[SESSION]\r\n");
    const auto running = PackageSession::Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(running && CreateDirectoryW(running->Folder().c_str(), nullptr));
    PackageSession::RemoveLeftovers();
    EXPECT_EQ(GetFileAttributesW((m_temporary / L"MXOVViewer\\111-1").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(FileExists(m_temporary / L"MXOVViewer\\222-1\\unsaved.txt"));
    EXPECT_NE(GetFileAttributesW(running->Folder().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(PackageSessionTest, AKeptSessionIsTakenOverOnceWithWhatWasRecorded) {
    auto session = PackageSession::Create(L"C:\\jobs\\\u00fc.mxov", m_error);
    ASSERT_TRUE(session && CreateDirectoryW(session->Folder().c_str(), nullptr));
    session->Record(L"a stamp longer than the next one");
    session->Record(L"7-9");
    const std::wstring folder = session->Folder();
    EXPECT_TRUE(PackageSession::TakeOver().empty()) << "it is in use";
    session->Keep();
    session.reset();

    auto left = PackageSession::TakeOver();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0]->PackageFile(), L"C:\\jobs\\\u00fc.mxov");
    EXPECT_EQ(left[0]->Folder(), folder);
    EXPECT_EQ(left[0]->Stamp(), L"7-9");
    EXPECT_TRUE(PackageSession::TakeOver().empty());
    left.clear();
    EXPECT_EQ(m_temporary.EntryCount(), 0);
}

TEST_F(PackageSessionTest, WhatWasLeftHalfUnpackedIsRemoved) {
    auto session = PackageSession::Create(L"C:\\a.mxov", m_error);
    ASSERT_TRUE(session && CreateDirectoryW(session->Folder().c_str(), nullptr));
    session->Keep();
    session.reset();
    EXPECT_EQ(m_temporary.EntryCount(), 1);
    EXPECT_TRUE(PackageSession::TakeOver().empty());
    EXPECT_EQ(m_temporary.EntryCount(), 0);
}

TEST_F(PackageSessionTest, TellsWhatChangedSinceTheFolderAgreedWithThePackage) {
    const TempFolder content;
    content.Write(L"mxinfo.ini", "[FILEINFO]\r\n");
    const std::wstring package = m_temporary / L"a.mxov";
    ASSERT_TRUE(mxovshare::CreatePackage(content.Path(), package).ok);
    auto session = PackageSession::Create(package, m_error);
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
    auto left = PackageSession::TakeOver();
    ASSERT_EQ(left.size(), 1u);
    left[0]->Resume();
    ASSERT_EQ(left[0]->Changes().size(), 1u);
    EXPECT_EQ(mxovshare::StampOfFolder(left[0]->Folder()), L"2");
}

TEST_F(PackageSessionTest, WithoutATemporaryFolderItSaysWhy) {
    SetEnvironmentVariableW(L"TMP", (m_temporary / L"none\\none").c_str());
    EXPECT_EQ(PackageSession::Create(L"C:\\a.mxov", m_error), nullptr);
    EXPECT_NE(m_error.find(L"none"), std::wstring::npos);
}
