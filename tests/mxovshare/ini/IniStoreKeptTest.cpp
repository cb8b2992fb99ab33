// Values that cannot be written now: kept in memory, joined with what others write, written later.
#include "IniStoreFile.h"

namespace mxovshare {
namespace {

using IniStoreKept = IniStoreFile;

TEST_F(IniStoreKept, ALockedFileKeepsTheValueForLater) {
    {
        const common::UniqueHandle lock = Lock(m_file, FILE_SHARE_READ);
        SetValue(L"k", L"new");
        SetValue(L"k", L"newer");
        SetValue(L"k", L"newer");
        EXPECT_EQ(Value(), L"newer");
        EXPECT_EQ(Bytes(), "[s]\nk=old\n");
        EXPECT_EQ(m_folder.EntryCount(), 1);
    }
    SetValue(L"k", L"newer");
    EXPECT_EQ(Bytes(), "[s]\nk=newer\n");
}

TEST_F(IniStoreKept, KeptChangesJoinWhatOthersWrote) {
    {
        const common::UniqueHandle lock = Lock(m_file, FILE_SHARE_READ | FILE_SHARE_WRITE);
        SetValue(L"j", L"mine");
        m_store.RemoveSection(L"t", m_file);
        Overwrite(m_file, "[s]\nk=theirs\n[t]\nx=1\n");
        EXPECT_EQ(Value(L"j"), L"mine");
        EXPECT_EQ(Value(L"k"), L"theirs");
        m_store.RemoveSection(L"t", m_file);
    }
    SetValue(L"i", L"last");
    EXPECT_EQ(Bytes(), "[s]\nk=theirs\nj=mine\ni=last\n");
}

TEST_F(IniStoreKept, AFileThatCannotBeReadIsNotOverwritten) {
    Overwrite(m_file, "[s]\nk=theirs\n");
    {
        const common::UniqueHandle lock = Lock(m_file, 0);
        EXPECT_EQ(Value(), L"old"); // what was read last
        SetValue(L"j", L"mine");
        EXPECT_EQ(Value(L"j"), L"mine");
    }
    EndBurst();
    EXPECT_EQ(Value(), L"theirs");
    EXPECT_EQ(Value(L"j"), L"mine");
    EXPECT_EQ(Bytes(), "[s]\nk=theirs\n");
    SetValue(L"i", L"last");
    EXPECT_EQ(Bytes(), "[s]\nk=theirs\nj=mine\ni=last\n");
}

TEST_F(IniStoreKept, EditsAreKeptThatChangeNothingOfWhatWasReadLast) {
    Overwrite(m_file, "[s]\nk=theirs\n[t]\nx=1\n");
    {
        const common::UniqueHandle lock = Lock(m_file, 0);
        SetValue(L"k", L"old");
        m_store.RemoveSection(L"t", m_file);
    }
    EXPECT_TRUE(m_store.SaveKept());
    EXPECT_EQ(Bytes(), "[s]\nk=old\n");
}

TEST_F(IniStoreKept, AReadOnlyFileKeepsTheValueForLater) {
    SetFileAttributesW(m_file.c_str(), FILE_ATTRIBUTE_READONLY);
    SetValue(L"k", L"new");
    EXPECT_EQ(Value(), L"new");
    EXPECT_EQ(Bytes(), "[s]\nk=old\n");
    EXPECT_EQ(m_folder.EntryCount(), 1);
    SetFileAttributesW(m_file.c_str(), FILE_ATTRIBUTE_NORMAL);
    SetValue(L"j", L"2");
    EXPECT_EQ(Bytes(), "[s]\nk=new\nj=2\n");
}

TEST_F(IniStoreKept, AMissingFolderKeepsTheValueForLater) {
    const std::wstring file = m_folder / L"Private\\mxinfo.ini";
    m_store.SetValue(L"s", L"k", L"1", file);
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"1");
    EXPECT_EQ(m_folder.EntryCount(), 1);
    ASSERT_TRUE(CreateDirectoryW((m_folder / L"Private").c_str(), nullptr));
    m_store.SetValue(L"s", L"j", L"2", file);
    EXPECT_EQ(m_folder.Read(L"Private\\mxinfo.ini"), "[s]\r\nk=1\r\nj=2\r\n");
}

TEST_F(IniStoreKept, KeptChangesGoWithTheirFile) {
    common::UniqueHandle lock = Lock(m_file, FILE_SHARE_READ | FILE_SHARE_DELETE);
    SetValue(L"k", L"never written");
    lock.reset();
    ASSERT_TRUE(DeleteFileW(m_file.c_str()));
    EndBurst();
    EXPECT_EQ(Value(), L"");
    m_folder.Write(L"mxinfo.ini", "[s]\nk=another package\n");
    EndBurst();
    EXPECT_EQ(Value(), L"another package");
    SetValue(L"j", L"1");
    EXPECT_EQ(Bytes(), "[s]\nk=another package\nj=1\n");
}

TEST_F(IniStoreKept, AFolderThatTakesNoFilesKeepsTheValue) {
    const std::wstring file = L"Z:\\proc\\mxinfo.ini"; // nobody may create a file there, whatever his rights
    m_store.SetValue(L"s", L"k", L"1", file);
    EXPECT_EQ(m_store.Value(L"s", L"k", file), L"1");
}

TEST_F(IniStoreKept, ADocumentThatGotAnotherNumberDuringALockIsCompletedUnderIt) {
    ASSERT_EQ(m_store.LastIndex(L"F", m_file), 0);
    {
        const common::UniqueHandle lock = Lock(m_file, FILE_SHARE_READ | FILE_SHARE_WRITE);
        m_store.SetValue(L"F_1", L"a", L"mine", m_file);
        Overwrite(m_file, "[F_1]\na=theirs\n");
    }
    m_store.SetValue(L"F_1", L"b", L"mine", m_file);
    EXPECT_EQ(Bytes(), "[F_1]\na=theirs\n[F_2]\na=mine\nb=mine\n");
}

TEST_F(IniStoreKept, KeptChangesOutliveTheFilesThatAreKept) {
    const common::UniqueHandle lock = Lock(m_file, FILE_SHARE_READ);
    SetValue(L"k", L"new");
    for (std::size_t i = 0; i < 2 * IniStore::kCapacity; ++i) {
        m_store.Value(L"s", L"k", m_folder / (std::to_wstring(i) + L".ini"));
    }
    EXPECT_EQ(Value(), L"new");
}

} // namespace
} // namespace mxovshare
