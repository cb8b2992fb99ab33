#include "versions/VersionKeeper.h"

#include "common/Policies.h"
#include "package/Paths.h"
#include "PolicyValue.h"
#include "TempFolder.h"
#include "versions/WorkFolder.h"

#include <gtest/gtest.h>

#include <thread>

using namespace viewer;

namespace {

constexpr wchar_t kKey[] = L"Software\\MXOVDocView\\Test\\Versions";
constexpr UINT kNotKept = WM_APP + 8;

class VersionKeeperTest : public testing::Test {
protected:
    VersionKeeperTest() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
        m_folder.Write(L"job\\mxinfo.ini", "[FILEINFO]\r\n");
        Save("N10 M30");
    }
    ~VersionKeeperTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }

    void Save(std::string_view program) {
        m_folder.Write(L"job\\a.nc", program);
        EXPECT_TRUE(mxovshare::CreatePackage(m_folder / L"job", Package()).ok);
    }

    void SaveAndKeep(std::string_view program) {
        Save(program);
        m_keeper->Keep(Package(), nullptr, kNotKept);
        m_keeper->Wait();
    }

    [[nodiscard]] std::wstring Package() const { return m_folder / L"job.mxov"; }
    [[nodiscard]] std::size_t Count() const {
        return VersionStore(m_folder / L"store").Read(Package()).versions.size();
    }

    static void Set(const wchar_t* name, DWORD value) {
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, REG_DWORD, &value, sizeof value);
    }

    TempFolder m_folder;
    VersionSettings m_settings{kKey};
    std::unique_ptr<VersionKeeper> m_keeper =
        std::make_unique<VersionKeeper>(m_folder / L"store", m_settings);
};

} // namespace

TEST_F(VersionKeeperTest, WhatWasAskedForIsKeptBeforeTheProgramEnds) {
    m_keeper->Keep(Package(), nullptr, kNotKept);
    m_keeper.reset();
    EXPECT_EQ(Count(), 1U);
}

TEST_F(VersionKeeperTest, SwitchedOffItWritesNothing) {
    EXPECT_TRUE(m_settings.AreKept());
    m_settings.Keep(false);
    SaveAndKeep("1");
    EXPECT_FALSE(FolderExists(m_folder / L"store"));
    m_settings.Keep(true);
    SaveAndKeep("2");
    EXPECT_EQ(Count(), 1U);
}

TEST_F(VersionKeeperTest, APolicyComesBeforeTheChoiceOfTheUser) {
    EXPECT_FALSE(VersionSettings::AreDecided());
    {
        const PolicyValue policy(common::kKeepVersionsPolicy, 0);
        EXPECT_TRUE(VersionSettings::AreDecided());
        SaveAndKeep("1");
        EXPECT_FALSE(FolderExists(m_folder / L"store"));
    }
    m_settings.Keep(false);
    const PolicyValue policy(common::kKeepVersionsPolicy, 1);
    SaveAndKeep("2");
    EXPECT_EQ(Count(), 1U);
}

TEST_F(VersionKeeperTest, TheLimitsAreTheUsersSettings) {
    EXPECT_EQ(m_settings.Limits().versions, 10U);
    EXPECT_EQ(m_settings.Limits().bytes, std::uint64_t{2} << 30);
    Set(L"VersionsOfEach", 2);
    Set(L"VersionsMegabytes", 5);
    EXPECT_EQ(m_settings.Limits().bytes, 5U << 20);
    for (const char* program : {"1", "2", "3", "4", "5"}) {
        SaveAndKeep(program);
    }
    EXPECT_EQ(Count(), 3U);
}

TEST_F(VersionKeeperTest, AFailureIsReportedOnce) {
    m_folder.Write(L"job.mxov", "Dear Sir");
    const common::UniqueWindow window(
        CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    m_keeper->Keep(Package(), window.get(), kNotKept);
    m_keeper->Wait();
    MSG message = {};
    EXPECT_TRUE(PeekMessageW(&message, window.get(), kNotKept, kNotKept, PM_REMOVE));
    EXPECT_NE(m_keeper->TakeFailure().find(L"job.mxov"), std::wstring::npos);
    EXPECT_EQ(m_keeper->TakeFailure(), L"");
}

TEST_F(VersionKeeperTest, VersionsThatAreLookedAtAreNotKept) {
    const WorkFolder shown(m_folder / L"store");
    const std::wstring copy = shown.Path() + L"\\job.mxov";
    ASSERT_TRUE(CopyFileW(Package().c_str(), copy.c_str(), TRUE));
    EXPECT_TRUE(m_keeper->IsShown(copy));
    EXPECT_FALSE(m_keeper->IsShown(Package()));
    m_keeper->Keep(copy, nullptr, kNotKept);
    m_keeper->Wait();
    EXPECT_TRUE(m_keeper->Store().Read(copy).versions.empty());
}

TEST_F(VersionKeeperTest, SeveralKeepersShareAStore) {
    VersionKeeper other(m_folder / L"store", m_settings);
    const std::wstring second = m_folder / L"second.mxov";
    ASSERT_TRUE(CopyFileW(Package().c_str(), second.c_str(), FALSE));
    for (int i = 0; i < 5; ++i) {
        m_keeper->Keep(Package(), nullptr, kNotKept);
        other.Keep(second, nullptr, kNotKept);
    }
    m_keeper->Wait();
    other.Wait();
    EXPECT_EQ(Count(), 1U);
    EXPECT_EQ(other.Store().Read(second).versions.size(), 1U);
}

TEST(WorkFolder, IsRemovedAtItsEndAndNotBefore) {
    const TempFolder store;
    std::wstring path;
    {
        const WorkFolder first(store.Path());
        const WorkFolder second(store.Path());
        EXPECT_NE(first.Path(), second.Path());
        path = first.Path();
        store.Write(FileName(path) + L"\\a.txt", "a");
        WorkFolder::RemoveLeftovers(store.Path());
        EXPECT_TRUE(FileExists(path + L"\\a.txt"));
    }
    EXPECT_FALSE(FolderExists(path));
    store.Write(L"1-1.work\\files\\a.txt", "left by a crash");
    store.Write(L"job-1.versions\\a.txt", "a");
    WorkFolder::RemoveLeftovers(store.Path());
    EXPECT_FALSE(FolderExists(store / L"1-1.work"));
    EXPECT_TRUE(FileExists(store / L"job-1.versions\\a.txt"));
}
