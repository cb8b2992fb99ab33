#include "pack/NewPackage.h"

#include "common/Utf8.h"
#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "TempFolder.h"
#include "zip/ZipDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace mxovshare;

namespace {

class NewPackageTest : public testing::Test {
protected:
    std::wstring Package() const { return m_work / L"p.mxov"; }

    std::vector<std::wstring> Names() const {
        std::vector<PackageEntry> entries;
        EXPECT_TRUE(ListPackage(Package(), entries).ok);
        std::vector<std::wstring> names;
        std::ranges::transform(entries, std::back_inserter(names), &PackageEntry::name);
        return names;
    }

    // What refuses to pack these items.
    std::wstring Refusal(const std::vector<FolderItem>& items) const {
        NewPackage package(Package());
        const DiskSource old(m_work.Write(L"old", ""));
        try {
            package.Pack(items, old, std::vector<const ZipEntry*>(items.size()), nullptr);
        } catch (const FileFailure& failure) {
            return common::FromUtf8(failure.what());
        }
        return {};
    }

    const TempFolder m_folder;
    const TempFolder m_work;
};

TEST_F(NewPackageTest, RefusesMoreThanAPackageMayHold) {
    const std::wstring refusal = L"cannot pack \"" + Package() + L"\": it holds more than ";
    EXPECT_EQ(Refusal(std::vector<FolderItem>(ZipLimits{}.entries + 1)), refusal + L"262144 files");
    FolderItem large;
    large.size = ZipLimits{}.total;
    FolderItem small;
    small.size = 1;
    EXPECT_EQ(Refusal({large, small}), refusal + L"1024 GB");
}

TEST_F(NewPackageTest, PacksAFileWithTheContentOfAnotherThatIsLeftOut) {
    const std::wstring path = m_folder.Write(L"mxinfo.ini", "old");
    const std::wstring content = m_folder.Write(L"content", "the new one");
    const Substitute substitute = {.path = path, .content = content, .size = 11, .modified = {}};
    NewPackage package(Package());
    package.Pack(m_folder.Path(), nullptr, &substitute);
    package.Commit();
    EXPECT_EQ(Names(), std::vector<std::wstring>{L"mxinfo.ini"});
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    EXPECT_EQ(m_work.Read(L"out\\mxinfo.ini"), "the new one");
}

// Changes "doc.txt" in the first attempts to pack it, and adds a file each time.
class Meddler : public PackageProgress {
public:
    Meddler(const TempFolder& folder, int attempts) : m_folder(folder), m_attempts(attempts) {}

    bool OnProgress(const std::wstring& name, std::uint64_t, std::uint64_t) override {
        const bool begins = name.ends_with(L"doc.txt") && m_name.ends_with(L"a.txt");
        m_name = name;
        if (begins && ++attempts <= m_attempts) {
            m_folder.Write(L"doc.txt", std::string(static_cast<std::size_t>(attempts), 'd'));
            m_folder.Write(L"new" + std::to_wstring(attempts), "new");
        }
        return true;
    }

    int attempts = 0; ///< that came to the document

private:
    const TempFolder& m_folder;
    int m_attempts;
    std::wstring m_name;
};

TEST_F(NewPackageTest, PacksWhatAFolderHoldsAtTheSixthAttempt) {
    m_folder.Write(L"a.txt", "a");
    m_folder.Write(L"doc.txt", "");
    Meddler meddler(m_folder, 5);
    NewPackage package(Package());
    package.Pack(m_folder.Path(), &meddler);
    package.Commit();
    EXPECT_EQ(meddler.attempts, 6);
    EXPECT_EQ(Names(),
              (std::vector<std::wstring>{L"a.txt", L"doc.txt", L"new1", L"new2", L"new3", L"new4", L"new5"}));
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    EXPECT_EQ(m_work.Read(L"out\\doc.txt"), "ddddd");
}

TEST_F(NewPackageTest, GivesUpAfterTheSixthAttempt) {
    m_folder.Write(L"a.txt", "a");
    m_folder.Write(L"doc.txt", "");
    Meddler meddler(m_folder, 100);
    NewPackage package(Package());
    EXPECT_THROW(package.Pack(m_folder.Path(), &meddler), FileChanged);
    EXPECT_EQ(meddler.attempts, 6);
}

} // namespace
