#include "IniStoreFile.h"

#include "ChildProcess.h"
#include "common/LongPath.h"
#include "ImportHook.h"
#include "LongFolder.h"

#include <cstdlib>
#include <thread>

namespace mxovshare {
namespace {

using Names = std::vector<std::wstring>;

TEST(IniStore, CreatesReadsWritesAndRemoves) {
    const TempFolder folder;
    const std::wstring file = folder / L"mxinfo.ini";
    IniStore store;
    EXPECT_EQ(store.Value(L"s", L"k", file), L"");
    EXPECT_TRUE(store.SectionNames(L"", file).empty());
    EXPECT_EQ(store.LastIndex(L"F", file), 0);
    store.RemoveSection(L"s", file);
    EXPECT_EQ(folder.EntryCount(), 0);

    store.SetValue(L"s", L"k", L"v", file);
    EXPECT_EQ(folder.Read(L"mxinfo.ini"), "[s]\r\nk=v\r\n");
    EXPECT_EQ(store.Value(L"S", L"K", file), L"v");
    store.SetValue(L"F_2", L"k", L"a\nb", file);
    EXPECT_EQ(store.LastIndex(L"F", file), 2);
    EXPECT_EQ(store.SectionNames(L"f", file), Names{L"F_2"});
    store.RemoveSection(L"s", file);
    EXPECT_EQ(folder.Read(L"mxinfo.ini"), "[F_2]\r\nk=\\esc:a\\nb\r\n");
    EXPECT_EQ(IniStore().Value(L"F_2", L"k", file), L"a\nb");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST_F(IniStoreFile, WritesNothingWhenNothingChanges) {
    const FileStamp before = StampOf(m_file);
    Value();
    SetValue(L"k", L"old");
    SetValue(L"a=b", L"v");
    SetValue(L"", L"v");
    m_store.RemoveSection(L"t", m_file);
    m_store.RemoveSection(L"", m_file);
    m_store.SectionNames(L"", m_file);
    EXPECT_EQ(StampOf(m_file), before);
}

TEST_F(IniStoreFile, WritesTheSameValueOnce) {
    SetValue(L"k", L"new");
    const FileStamp before = StampOf(m_file);
    SetValue(L"k", L"new");
    EXPECT_EQ(StampOf(m_file), before);
}

TEST_F(IniStoreFile, SeesAnotherLength) {
    Overwrite(m_file, "[s]\nk=newer\n");
    EXPECT_EQ(Value(), L"newer");
}

TEST_F(IniStoreFile, SeesTheSameLength) {
    Overwrite(m_file, "[s]\nk=new\n");
    EXPECT_EQ(Value(), L"new");
    Overwrite(m_file, "[s]\nk=two\n"); // perhaps within one step of the file system's clock
    Sleep(11);
    EXPECT_EQ(Value(), L"two");
}

TEST_F(IniStoreFile, SeesTheSameLengthOfALargeFile) {
    const std::string tail = "; " + std::string(1 << 20, 'x');
    Overwrite(m_file, "[s]\nk=one\n" + tail);
    EXPECT_EQ(Value(), L"one");
    Overwrite(m_file, "[s]\nk=two\n" + tail);
    Sleep(101);
    EXPECT_EQ(Value(), L"two");
}

int allocations = 0;
decltype(std::malloc)* realMalloc = nullptr;

void* CountedMalloc(std::size_t size) {
    ++allocations;
    return realMalloc(size);
}

// Of reading one value.
int AllocationsOf(IniStore& store, const std::wstring& file) {
    const ImportHook<decltype(CountedMalloc)> hook("malloc", CountedMalloc);
    realMalloc = hook.Real();
    allocations = 0;
    EXPECT_EQ(store.Value(L"s", L"k", file), L"new");
    return allocations;
}

TEST_F(IniStoreFile, ComparesItsOwnWriteWithoutBuildingTheDocumentAgain) {
    std::string bytes = "[s]\nk=old\n";
    for (int i = 0; i < 1000; ++i) {
        bytes += "[section " + std::to_string(i) + "]\n";
    }
    Overwrite(m_file, bytes);
    SetValue(L"k", L"new");
    Sleep(20);
    EXPECT_LT(AllocationsOf(m_store, m_file), 100);
    IniStore fresh;
    EXPECT_GT(AllocationsOf(fresh, m_file), 1000);
}

TEST_F(IniStoreFile, SeesAnotherFileOfTheSameLengthAndTime) {
    const std::wstring other = m_folder.Write(L"other.ini", "[s]\nk=new\n");
    m_folder.SetTime(L"other.ini", kOldTime);
    ASSERT_TRUE(MoveFileExW(other.c_str(), m_file.c_str(), MOVEFILE_REPLACE_EXISTING));
    EndBurst();
    EXPECT_EQ(Value(), L"new");
}

TEST_F(IniStoreFile, SeesThatTheFileIsGoneAndBack) {
    ASSERT_TRUE(DeleteFileW(m_file.c_str()));
    EndBurst();
    EXPECT_EQ(Value(), L"");
    m_folder.Write(L"mxinfo.ini", "[s]\nk=back\n");
    EndBurst();
    EXPECT_EQ(Value(), L"back");
}

TEST(IniStoreChild, DISABLED_WritesWithTheProfileFunctions) {
    if (FileForChild().empty()) {
        return;
    }
    ASSERT_TRUE(WritePrivateProfileStringW(L"s", L"other", L"theirs", FileForChild().c_str()));
}

TEST_F(IniStoreFile, KeepsWhatAnotherProcessWrote) {
    SetValue(L"mine", L"1");
    ASSERT_EQ(RunChild(L"IniStoreChild.DISABLED_WritesWithTheProfileFunctions", m_file), 0U);
    SetValue(L"mine", L"2");
    EXPECT_EQ(Value(L"other"), L"theirs");
    EXPECT_EQ(Value(L"mine"), L"2");
    EXPECT_EQ(IniStore().Value(L"s", L"other", m_file), L"theirs");
}

TEST_F(IniStoreFile, OddPathsDoNoHarm) {
    for (const std::wstring& path :
         {std::wstring(), m_folder.Path(), std::wstring(L"?:*"), std::wstring(L"\\\\?\\"),
          std::wstring(L"nul"), m_folder / L"a|b.ini", std::wstring(70'000, L'x')}) {
        EXPECT_EQ(m_store.Value(L"x", L"y", path), L"");
        EXPECT_EQ(m_store.LastIndex(L"x", path), 0);
        m_store.RemoveSection(L"x", path);
    }
    m_store.SetValue(L"s", L"k", L"v", m_folder.Path());
    m_store.SetValue(L"s", L"k", L"v", L"");
    EXPECT_EQ(m_folder.EntryCount(), 1);
}

TEST_F(IniStoreFile, AHugeFileIsNeitherReadNorWritten) {
    const common::UniqueHandle file =
        common::OwnFile(CreateFileW(m_file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
    constexpr LONGLONG kSize = IniDocument::kMaxBytes + 1;
    LARGE_INTEGER end = {};
    end.QuadPart = kSize;
    ASSERT_TRUE(SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) && SetEndOfFile(file.get()));
    EndBurst();
    EXPECT_EQ(Value(), L"old"); // what was read last
    EXPECT_EQ(IniStore().Value(L"s", L"k", m_file), L"");
    SetValue(L"j", L"mine");
    EXPECT_EQ(Value(L"j"), L"mine");
    EXPECT_EQ(StampOf(m_file).size, static_cast<std::uint64_t>(kSize));
}

TEST_F(IniStoreFile, KnowsOneFileUnderManySpellings) {
    std::wstring upper = m_file;
    CharUpperW(upper.data());
    for (const std::wstring& path : {upper, m_folder / L".\\sub\\..\\mxinfo.ini", L"\\\\?\\" + m_file}) {
        m_store.SetValue(L"s", L"k", path, path);
        EXPECT_EQ(Value(), path);
    }
}

TEST_F(IniStoreFile, MoreFilesThanAreKept) {
    for (int round = 0; round < 3; ++round) {
        for (std::size_t i = 0; i < 3 * IniStore::kCapacity; ++i) {
            const std::wstring file = m_folder / (std::to_wstring(i) + L".ini");
            const std::wstring before = round == 0 ? L"" : std::to_wstring(round - 1);
            EXPECT_EQ(m_store.Value(L"s", L"k", file), before);
            m_store.SetValue(L"s", L"k", std::to_wstring(round), file);
        }
    }
}

TEST_F(IniStoreFile, ThreadsMayShareIt) {
    std::vector<std::thread> threads(4);
    for (std::size_t number = 1; number <= threads.size(); ++number) {
        threads[number - 1] = std::thread([this, number] {
            const std::wstring name = L"F_" + std::to_wstring(number);
            for (int i = 0; i < 25; ++i) {
                m_store.SetValue(name, L"k", std::to_wstring(i), m_file);
                EXPECT_EQ(m_store.Value(name, L"k", m_file), std::to_wstring(i));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    IniStore fresh;
    EXPECT_EQ(fresh.SectionNames(L"F_", m_file).size(), 4U);
    for (const std::wstring& name : fresh.SectionNames(L"F_", m_file)) {
        EXPECT_EQ(fresh.Value(name, L"k", m_file), L"24");
    }
}

TEST_F(IniStoreFile, TenThousandDocuments) {
    std::string bytes;
    for (int i = 1; i <= 10'000; ++i) {
        bytes += "[REFERANCE_FILE_" + std::to_string(i) + "]\r\nIsReferencedFile=YES\r\nFilePath=C:\\jobs\\" +
                 std::to_string(i) + ".pdf\r\n";
    }
    Overwrite(m_file, bytes);
    const Names names = m_store.SectionNames(L"REFERANCE_FILE", m_file);
    ASSERT_EQ(names.size(), 10'000U);
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_EQ(m_store.Value(names[i], L"FilePath", m_file),
                  L"C:\\jobs\\" + std::to_wstring(i + 1) + L".pdf");
    }
    EXPECT_EQ(m_store.LastIndex(L"REFERANCE_FILE", m_file), 10'000);
    m_store.SetValue(L"REFERANCE_FILE_5000", L"Description", L"half way", m_file);
    EXPECT_EQ(m_store.Value(L"REFERANCE_FILE_10000", L"FilePath", m_file), L"C:\\jobs\\10000.pdf");
    EXPECT_EQ(IniStore().Value(L"REFERANCE_FILE_5000", L"Description", m_file), L"half way");
}

TEST(IniStore, PathsMayBeLong) {
    LongFolder folder(300);
    const std::wstring file = folder / L"mxinfo.ini";
    IniStore().SetValue(L"s", L"k", L"v", file);
    EXPECT_EQ(IniStore().Value(L"s", L"k", file), L"v");
    EXPECT_TRUE(StampOf(common::LongPath(file)).exists);
}

} // namespace
} // namespace mxovshare
