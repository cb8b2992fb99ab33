#include "pack/BackgroundFlusher.h"

#include "common/Handles.h"
#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <thread>

using namespace mxovshare;

namespace {

class BackgroundFlusherTest : public testing::Test {
protected:
    common::UniqueHandle Open(DWORD access) const {
        return common::OwnFile(CreateFileW(m_path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                           nullptr, OPEN_EXISTING, 0, nullptr));
    }

    const std::vector<std::uint8_t> m_piece = std::vector<std::uint8_t>(3'000'000, 'p');
    TempFolder m_work;
    const std::wstring m_path = m_work.Write(L"file", "old");
};

TEST_F(BackgroundFlusherTest, WritesFromSeveralThreads) {
    const common::UniqueHandle handle = Open(GENERIC_READ | GENERIC_WRITE);
    mxovshare::OpenFile file(handle.get(), m_path);
    BackgroundFlusher sink(file, handle.get(), m_path);
    std::vector<std::thread> writers;
    for (std::uint64_t i = 0; i < 8; ++i) {
        writers.emplace_back([&, i] { sink.Write(i * m_piece.size(), m_piece); });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(file.Size(), 8 * m_piece.size());
    sink.SetSize(20'000'000);
    sink.Finish();
    const std::string content = m_work.Read(L"file");
    EXPECT_EQ(content.size(), 20'000'000u);
    EXPECT_EQ(content.find_first_not_of('p'), std::string::npos);
}

TEST_F(BackgroundFlusherTest, TellsAFlushThatFailedBeforeTheLastOne) {
    const common::UniqueHandle handle = Open(GENERIC_READ | GENERIC_WRITE);
    const common::UniqueHandle unflushable = Open(GENERIC_READ);
    ASSERT_FALSE(FlushFileBuffers(unflushable.get()));
    mxovshare::OpenFile file(handle.get(), m_path);
    BackgroundFlusher sink(file, unflushable.get(), m_path);
    for (std::uint64_t i = 0; i < 3; ++i) {
        sink.Write(i * m_piece.size(), m_piece);
    }
    EXPECT_THROW(sink.Finish(), FileFailure);
}

TEST_F(BackgroundFlusherTest, MayBeGivenUpAtAnyTime) {
    const common::UniqueHandle handle = Open(GENERIC_READ | GENERIC_WRITE);
    mxovshare::OpenFile file(handle.get(), m_path);
    BackgroundFlusher sink(file, handle.get(), m_path);
    for (std::uint64_t i = 0; i < 6; ++i) {
        sink.Write(i * m_piece.size(), m_piece);
    }
}

} // namespace
