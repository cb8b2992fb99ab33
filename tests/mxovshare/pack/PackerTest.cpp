#include "pack/Packer.h"

#include "files/DiskFile.h"
#include "Listeners.h"
#include "TempFolder.h"
#include "zip/ZipDirectory.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

// A package on a slow disk.
class SlowSource : public ByteSource {
public:
    explicit SlowSource(const std::wstring& path) : m_source(path) {}

    std::uint64_t Size() const override { return m_source.Size(); }
    void Read(std::uint64_t offset, std::span<std::uint8_t> to) const override {
        Sleep(100);
        m_source.Read(offset, to);
    }

private:
    DiskSource m_source;
};

TEST(PackItems, CountsWhatItCopiesOnceHoweverOftenItReports) {
    const TempFolder folder;
    const TempFolder work;
    folder.Write(L"doc.txt", std::string(1000, 'd'));
    ASSERT_TRUE(CreatePackage(folder.Path(), work / L"old.mxov").ok);
    const SlowSource old(work / L"old.mxov");
    const std::vector<ZipEntry> entries = ReadZipDirectory(old);
    ASSERT_EQ(entries.size(), 1u);

    const std::wstring path = work.Write(L"new.mxov", "");
    const common::UniqueHandle handle = common::OwnFile(
        CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    mxovshare::OpenFile file(handle.get(), path);
    FolderItem item;
    item.item = entries[0];
    item.size = entries[0].size;
    RecordingProgress progress;
    ProgressMeter meter(&progress, 5000);
    PackItems(file, {item}, old, {&entries[0]}, meter);
    EXPECT_GT(progress.calls.size(), 3u) << "it never waited";
    EXPECT_EQ(progress.calls.back().done, 2000u); // copied, and verified at once
}

} // namespace
