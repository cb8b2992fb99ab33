// Restoring versions, also from a store that is damaged or was left by a crash.
#include "common/Policies.h"
#include "package/Paths.h"
#include "PolicyValue.h"
#include "VersionStoreFixture.h"

using namespace viewer;

namespace {

class VersionRestoreTest : public VersionStoreFixture {};

} // namespace

TEST_F(VersionRestoreTest, AnEarlierVersionIsRestoredByteForByte) {
    Save();
    ASSERT_TRUE(Keep().ok);
    SaveWith(L"GCode\\a.nc", "N20 M30");
    ASSERT_TRUE(Keep().ok);
    SaveAndKeep(1);
    const std::vector<Version> versions = Versions();
    ASSERT_EQ(versions.size(), 3U);
    const mxovshare::PackageResult restored = Restore(versions[1]);
    ASSERT_TRUE(restored.ok) << restored.message.c_str();
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\a.nc"), "N20 M30");
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\b.nc"), "N10 G0 X1");
    EXPECT_EQ(m_folder.Read(L"restored\\mxinfo.ini"), m_folder.Read(L"job\\mxinfo.ini"));
    EXPECT_FALSE(FolderExists(m_folder / L"restored.part") || FileExists(m_folder / L"restored.new"));
}

TEST_F(VersionRestoreTest, ADamagedListIsNamedAndTheOthersAreThere) {
    SaveAndKeep(3);
    const std::wstring id = Versions()[1].id;
    const std::wstring list = InStore(id + kListExtension);
    const std::string bytes = m_folder.Read(list);
    for (const std::string& damaged :
         {std::string(), std::string(5000, '\0'), bytes.substr(0, bytes.size() - 20),
          bytes + "9=nonsense\r\n", std::string("[VERSION]\r\nCount=1\r\n")}) {
        m_folder.Write(list, damaged);
        const VersionList read = m_store.Read(Package());
        EXPECT_EQ(read.versions.size(), 2U);
        EXPECT_EQ(read.damaged, std::vector<std::wstring>{id});
        EXPECT_TRUE(Restore(read.versions.back()).ok);
    }
    SaveAndKeep(1);
    EXPECT_EQ(Versions().size(), 3U);
}

TEST_F(VersionRestoreTest, MissingAndDamagedContentsAreReportedInOneLine) {
    SaveAndKeep(2);
    const std::vector<Version> versions = Versions();
    const std::wstring contents = InStore(versions[0].id + kContentsExtension);
    const std::string bytes = m_folder.Read(contents);
    ASSERT_TRUE(DeleteFileW((m_folder / contents).c_str()));
    const auto message = [&] {
        const mxovshare::PackageResult result = Restore(versions[1]);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.message.find(L'\n'), std::wstring::npos);
        return result.message;
    };
    EXPECT_NE(message().find(versions[0].id + kContentsExtension), std::wstring::npos);
    m_folder.Write(contents, bytes.substr(0, bytes.size() / 2));
    EXPECT_FALSE(message().empty());
    std::string changed = bytes;
    const std::size_t place = changed.find("N10 G0");
    ASSERT_NE(place, std::string::npos);
    changed[place] ^= 1;
    m_folder.Write(contents, changed);
    EXPECT_FALSE(message().empty());
    m_folder.Write(contents, m_folder.Read(InStore(versions[1].id + kContentsExtension)));
    EXPECT_EQ(message(), L"the content of mxinfo.ini is missing");
}

TEST_F(VersionRestoreTest, WhatACrashLeftIsRemovedAndNoVersionIsLost) {
    SaveAndKeep(2);
    const std::vector<Version> versions = Versions();
    const std::string contents = m_folder.Read(InStore(versions[0].id + kContentsExtension));
    m_folder.Write(InStore(L"01DC000000000001.files.mxov-new"), contents.substr(0, 100));
    m_folder.Write(InStore(L"01DC000000000002.files"), contents);
    m_folder.Write(InStore(L"01DC000000000002.ini.new"), "[VERSION]");
    EXPECT_EQ(Versions().size(), 2U);
    SaveAndKeep(1);
    EXPECT_EQ(Versions().size(), 3U);
    EXPECT_EQ(Stored().size(), 6U);
    ExpectOnlyWhole();
    DropVersion(m_store.FolderOf(Package()), versions[0].id); // and a crash before its contents are removed
    EXPECT_EQ(Versions().size(), 2U);
    SaveAndKeep(1);
    for (const Version& version : Versions()) {
        EXPECT_TRUE(Restore(version).ok);
    }
}

TEST_F(VersionRestoreTest, AClockThatWasSetBackKeepsTheOrder) {
    SaveAndKeep(1);
    Version later = Versions().front();
    later.id = L"7FFFFFFFFFFFFFFF";
    ASSERT_EQ(WriteVersion(m_store.FolderOf(Package()), later), DWORD{ERROR_SUCCESS});
    SaveAndKeep(1);
    const std::vector<std::wstring> ids = VersionIds(m_store.FolderOf(Package()));
    ASSERT_EQ(ids.size(), 3U);
    EXPECT_EQ(ids.back(), L"8000000000000000");
    EXPECT_TRUE(Restore(Versions().back()).ok);
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\a.nc"), Program(2));
}

TEST_F(VersionRestoreTest, ProgramsAreNotRestoredWhereTheyAreRefused) {
    SaveWith(L"setup.exe", "MZ");
    ASSERT_TRUE(Keep().ok);
    const Version version = Versions().front();
    {
        const PolicyValue policy(common::kRefuseProgramsPolicy, 1);
        const mxovshare::PackageResult restored = Restore(version);
        EXPECT_FALSE(restored.ok);
        EXPECT_NE(restored.message.find(L"setup.exe"), std::wstring::npos);
        EXPECT_FALSE(FileExists(m_folder / L"restored\\setup.exe"));
    }
    EXPECT_TRUE(Restore(version).ok);
}
