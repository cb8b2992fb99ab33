// Allocations that fail while packages are worked on, and how much memory that work takes.
#include "mxovpackage.h"

#include "CountedMemory.h"
#include "host/MessageBoxes.h"
#include "TempFolder.h"
#include "ZipForge.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

using namespace counted;
using namespace mxovshare;

namespace {

int errorsShown = 0;

class AllocationFaultTest : public testing::Test {
protected:
    void SetUp() override {
        SetErrorSink([](const wchar_t*) { ++errorsShown; });
        m_folder.Write(L"mxinfo.ini", kInformation);
        m_folder.Write(L"docs\\a.txt", std::string(70'000, 'a'));
        m_folder.Write(L"b.txt", "b");
        ASSERT_TRUE(CreatePackage(m_folder.Path(), m_package).ok);
        m_old = m_work.Read(L"p.mxov");
    }
    void TearDown() override {
        countdown = 0;
        SetErrorSink(nullptr);
    }

    // Calls `work` with 1, 4, 7, ... until it makes fewer allocations; with 1, 2, 3, ... with MXOV_LONG.
    static void FailEach(const std::function<void(long long number)>& work) {
        constexpr long long kMost = 20'000;
        const int stride = std::getenv("MXOV_LONG") != nullptr ? 1 : 3;
        for (long long number = 1; number < kMost; number += stride) {
            fired = false;
            work(number);
            if (!fired) {
                EXPECT_GT(number, 10);
                return;
            }
        }
        FAIL() << "there are always more allocations";
    }

    // Makes one allocation of a call fail, which its result must admit unless it succeeded anyway.
    template <class Call>
    static bool Succeeds(long long number, Call call) {
        countdown = number;
        const PackageResult result = call();
        countdown = 0;
        EXPECT_TRUE(result.ok || fired);
        EXPECT_FALSE(result.cancelled);
        EXPECT_TRUE(!result.ok || result.message.empty());
        return result.ok;
    }

    static constexpr const char* kInformation = "[FILEINFO]\r\nGCode=GCode\\a.nc\r\n";
    TempFolder m_folder;
    TempFolder m_work;
    const std::wstring m_package = m_work / L"p.mxov";
    std::string m_old;
};

TEST_F(AllocationFaultTest, PackingLeavesTheOldPackage) {
    FailEach([this](long long number) {
        Succeeds(number, [this] { return CreatePackage(m_folder.Path(), m_package); });
        EXPECT_EQ(m_work.Read(L"p.mxov"), m_old); // packed again it is the same
        EXPECT_EQ(m_work.EntryCount(), 1);
    });
}

TEST_F(AllocationFaultTest, PackingAnewLeavesNothing) {
    const std::wstring file = m_work / L"new.mxov";
    FailEach([&](long long number) {
        const bool done = Succeeds(number, [&] { return CreatePackage(m_folder.Path(), file); });
        EXPECT_EQ(DeleteFileW(file.c_str()) != FALSE, done);
        EXPECT_EQ(m_work.EntryCount(), 1);
    });
}

TEST_F(AllocationFaultTest, UnpackingLeavesNothing) {
    const std::wstring folder = m_work / L"out";
    FailEach([&](long long number) {
        const bool done = Succeeds(number, [&] { return UnpackPackage(m_package, folder); });
        EXPECT_EQ(m_work.Read(L"out\\docs\\a.txt").size(), done ? 70'000u : 0u);
        for (const wchar_t* file : {L"out\\docs\\a.txt", L"out\\b.txt", L"out\\mxinfo.ini"}) {
            EXPECT_EQ(DeleteFileW((m_work / file).c_str()) != FALSE, done);
        }
        EXPECT_EQ(RemoveDirectoryW((m_work / L"out\\docs").c_str()) != FALSE, done);
        EXPECT_EQ(RemoveDirectoryW(folder.c_str()) != FALSE, done);
    });
}

TEST_F(AllocationFaultTest, ReadingReportsIt) {
    std::vector<PackageEntry> entries;
    Information information;
    FailEach([&](long long number) { Succeeds(number, [&] { return VerifyPackage(m_package); }); });
    FailEach([&](long long number) { Succeeds(number, [&] { return ListPackage(m_package, entries); }); });
    FailEach(
        [&](long long number) { Succeeds(number, [&] { return ReadInformation(m_package, information); }); });
    EXPECT_EQ(entries.size(), 3u);
    EXPECT_EQ(information.SectionNames({}).size(), 1u);
}

TEST_F(AllocationFaultTest, SavingReportsItAndLeavesEverythingAsItWas) {
    FailEach([this](long long number) {
        m_folder.Write(L"mxinfo.ini", kInformation);
        m_work.Write(L"p.mxov", m_old);
        ResumeFolder(m_folder.Path(), L"elsewhere", L""); // what was written here is no other's
        static_cast<void>(TakeSaveFailure(m_folder.Path()));
        errorsShown = 0;
        std::wstring folder = m_folder.Path();
        std::wstring file = m_package;
        std::wstring operation = L"Edited";
        countdown = number;
        Utils::ReGenerateOrvandoFile(std::move(folder), std::move(file), std::move(operation));
        countdown = 0;
        EXPECT_EQ(m_work.EntryCount(), 1);
        EXPECT_EQ(m_folder.EntryCount(), 3);
        const bool saved = m_work.Read(L"p.mxov") != m_old;
        EXPECT_EQ(errorsShown, saved ? 0 : 1);
        EXPECT_EQ(TakeSaveFailure(m_folder.Path()), !saved);
        if (!saved) {
            EXPECT_TRUE(fired);
            EXPECT_EQ(m_folder.Read(L"mxinfo.ini"), kInformation);
        }
    });
}

// Entries through many folders each, in names that are nearly as long as Wine's file systems take.
TEST(PackageMemory, DeepFoldersTakeNoMoreThanTheirNames) {
    const TempFolder work;
    std::vector<ForgedEntry> entries;
    for (char first = 'a'; first < 'e'; ++first) {
        std::string name(1, first);
        for (int i = 0; i < 249; ++i) {
            name += "/folders.deep";
        }
        entries.push_back(MakeEntry(name, "x"));
    }
    const std::string zip = ForgeZip(entries);
    const std::wstring package = work.Write(L"p.mxov", zip);
    const std::wstring folder = work / L"o";
    peak = outstanding.load();
    const long long before = outstanding;
    ASSERT_TRUE(UnpackPackage(package, folder).ok);
    EXPECT_LT(peak - before, 3 * static_cast<long long>(zip.size()) + 1'000'000);
}

} // namespace
